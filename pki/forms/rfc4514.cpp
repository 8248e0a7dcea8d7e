#include "pki/export.h"
Name *pki_RDNSequence_text(const RDNSequence *sequence) {
  return List_len(sequence) == 0 ? asn1_Name_new(0) : asn1_RDNSequence_to_Name(sequence);
}
