/* The example of the header rfc7292.h, for rfc7292_test.cpp. */
#include <orvelpki.h>

void each_certificate(const pki_PFX *pfx, void (*f)(const Certificate *));

// Decodes the list that an OCTET STRING holds. Returns NULL where it does not.
static List *list_in(const Any *string, const uint8_t *(*decode)(const uint8_t *, const uint8_t *,
                                                                 uint32_t, List **, uint32_t)) {
  OctetString *octets = NULL;
  List *list = NULL;
  if (string == NULL) return NULL;
  asn1_OctetString_d(string->data, string->data + string->length, 0, &octets, 0);
  if (octets != NULL) decode(octets->data, octets->data + octets->length, 0, &list, 0);
  asn1_OctetString_free(octets);
  return list;
}

static Certificate *certificate_in(const SafeBag *bag) {
  const Any *value = bag->bagValue;
  CertBag *cert_bag = NULL;
  OctetString *octets = NULL;
  Certificate *certificate = NULL;
  if (asn1_ObjId_cmp(bag->bagId, asn1_Get_certBag()) != 0) return NULL;
  pki_CertBag_d(value->data, value->data + value->length, 0, &cert_bag, 0);
  if (cert_bag == NULL) return NULL;
  if (asn1_ObjId_cmp(cert_bag->certId, asn1_Get_x509Certificate()) == 0) {
    value = cert_bag->certValue;
    asn1_OctetString_d(value->data, value->data + value->length, 0, &octets, 0);
  }
  if (octets != NULL) {
    pki_Certificate_d(octets->data, octets->data + octets->length, 0, &certificate, 0);
  }
  asn1_OctetString_free(octets);
  pki_CertBag_free(cert_bag);
  return certificate;
}

void each_certificate(const pki_PFX *pfx, void (*f)(const Certificate *)) {
  List *safe = list_in(pfx->authSafe->content, pki_AuthenticatedSafe_d);
  for (int32_t i = 0; i < List_len(safe); ++i) {
    // A content that is encrypted is no OCTET STRING, and opens to no list.
    const pki_ContentInfo *info = (const pki_ContentInfo *)List_get(safe, i);
    List *bags = list_in(info->content, pki_SafeContents_d);
    for (int32_t j = 0; j < List_len(bags); ++j) {
      Certificate *certificate = certificate_in((const SafeBag *)List_get(bags, j));
      if (certificate != NULL) f(certificate);
      pki_Certificate_free(certificate);
    }
    pki_SafeContents_free(bags);
  }
  pki_AuthenticatedSafe_free(safe);
}
