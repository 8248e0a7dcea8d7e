/* Every form of an RFC: FORM(T, Record), or LIST_FORM where there is no pki_T_new(). */
/* clang-format off */
FORM(AlgId, AlgId)
FORM(AttributeValueAssertion, AttributeValueAssertion)
FORM(CRLEntry, CRLEntry)
FORM(Certificate, Certificate)
FORM(CertificateList_TBS, CertificateList_TBS)
FORM(CertificateRevocationList, CertificateRevocationList)
FORM(Certificate_TBS, Certificate_TBS)
FORM(Extension, Extension)
LIST_FORM(Extensions, Extensions)
FORM(GeneralName, GeneralName)
LIST_FORM(GeneralNames, List)
FORM(OtherName, OtherName)
LIST_FORM(RDNSequence, RDNSequence)
LIST_FORM(RelativeDistinguishedName, RelativeDistinguishedName)
FORM(SubjectPKI, SubjectPKI)
FORM(Validity, Validity)
/* clang-format on */
