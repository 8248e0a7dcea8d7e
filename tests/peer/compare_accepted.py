"""The differences that are right, and the kinds of values that must be compared."""

# Why a difference is right, and where it is: file and path.
DIFFERENCES = {
    "No calendar has this date: its month, hour, minute or second is too large, or a letter.": (
        ("0462797693d90b713aba.der", "notBefore"),
        ("cbffd4fd8b3a0a171624.der", "notBefore"),
        ("dbf6a4ab93d984ac9cb9.der", "notBefore"),
        ("f989c3bdc7358a3fa81e.der", "notBefore"),
        ("2ed66968966d0eee2ee2.der", "thisUpdate"),
        ("2ed66968966d0eee2ee2.der", "nextUpdate"),
        ("53582bc094e180469a9f.der", "nextUpdate"),
        ("910ff7898428ba64cdd0.der", "nextUpdate"),
    ),
    "OpenSSL takes any octets for a time, and prints \"Bad time value\"; the tool refuses them.": (
        ("2354ed09b97ef3c2c303.der", ""),
        ("f777b1e7a63d009471b1.der", ""),
    ),
    "A SET that is primitive: X.690, 8.11.1 has it constructed. OpenSSL does not look.": (
        ("3b2fff98694d1770218b.der", ""),
    ),
    "A value of an attribute that is a RELATIVE-OID: the peers have no text for it.": (
        ("0cd8c513d14e39d7b024.der", "issuer"),
    ),
    "A PrintableString with the octet 96, which OpenSSL takes for Latin-1; .valueOctets has it.": (
        ("1d16375cdb4b5bf62e34.der", "subject[1][0]"),
    ),
    "A URI with octets outside of ASCII, which .sans counts among the unreadable ones.": (
        ("2bd004a45ec665835f4c.der", "sans.uri"),
    ),
    "Bits that have no name: the peers leave them out.": (
        ("9f35d6bc022bbc8d5892.der", "extensions[cRLDistributionPoints][0].reasons"),
        ("f90f9f3079dae46f8d99.der", "extensions[keyUsage]"),
    ),
    "Reasons alone, which cryptography refuses; there are no words for them here.": (
        ("761a777445ba89d59f3a.der", "extensions[cRLDistributionPoints]"),
    ),
    "A reason without a name: RFC 5280, 5.3.1 has no reason 7.": (
        ("da89b00c3c6fc28c4a60.der", "revokedCertificates[0][cRLReason]"),
    ),
    "An empty relative name is a mere slash in the text of a name, like an escape of the next.": (
        ("82c29daa1db4a5170a2b.der", "subject in a text"),
        ("f7c781fc352076574b95.der", "subject in a text"),
    ),
    "OpenSSL ends a text at its first octet 00.": (
        ("851faf744384d78f3279.der", "extensions[certificatePolicies]"),
    ),
    "A minimum, which the peers leave out.": (
        ("a92961755f28acc6e4a2.der", "extensions[nameConstraints].permittedSubtrees[0].minimum"),
        ("a92961755f28acc6e4a2.der", "extensions[nameConstraints].permittedSubtrees[1].minimum"),
    ),
    "Octets are left over after the value: OpenSSL does not look at them.": (
        ("f45320b6173911c57f6d.der", "extensions[authorityInfoAccess]"),
    ),
    "A list with the tag 81, primitive: X.690, 8.10.1 has it constructed. OpenSSL does not look.": (
        ("707a803a98e1f81945e0.der", "crlExtensions[authorityKeyIdentifier]"),
    ),
}

# The identifiers that have one name in their standard, or in the tool's style, and another in OpenSSL.
NAMES = {
    "1.2.840.10040.4.1": "id-dsa",
    "1.2.840.10045.3.1.7": "secp256r1",
    "1.3.6.1.4.1.311.2.1.21": "ms-individual-code-signing",
    "1.3.6.1.4.1.311.2.1.22": "ms-commercial-code-signing",
    "1.3.6.1.4.1.311.10.3.1": "ms-trust-list-signing",
    "1.3.6.1.4.1.311.10.3.3": "ms-server-gated-crypto",
    "1.3.6.1.4.1.311.10.3.4": "ms-encrypted-file-system",
    "1.3.6.1.4.1.311.20.2.2": "ms-smartcard-logon",
    "1.3.6.1.4.1.311.20.2.3": "userPrincipalName",
    "1.3.6.1.4.1.11129.2.4.2": "signedCertificateTimestamps",
    "1.3.6.1.4.1.11129.2.4.3": "precertificatePoison",
    "1.3.6.1.5.5.7.1.7": "ipAddrBlocks",
    "1.3.6.1.5.5.7.1.8": "autonomousSysIds",
    "1.3.6.1.5.5.7.2.1": "cps",
    "1.3.6.1.5.5.7.2.2": "unotice",
    "1.3.6.1.5.5.7.9.5": "countryOfResidence",
    "1.3.6.1.5.5.7.48.1.1": "ocsp-basic",
    "1.3.6.1.5.5.7.48.1.3": "ocsp-crl",
    "1.3.6.1.5.5.7.48.1.4": "ocsp-response",
    "1.3.6.1.5.5.7.48.3": "timeStamping",
    "2.5.29.27": "deltaCRLIndicator",
    "2.5.29.37": "extKeyUsage",
}

# What is made on the spot has these.
KINDS = (
    "CRL as a whole", "OCSP status good", "OCSP status revoked", "OCSP status unknown",
    "algorithm", "answer of crl", "attribute", "certificate of OCSP", "date of an entry",
    "digests", "element", "extension authorityInfoAccess", "extension authorityKeyIdentifier",
    "extension autonomousSysIds", "extension basicConstraints", "extension cRLDistributionPoints",
    "extension cRLNumber", "extension cRLReason", "extension certificateIssuer",
    "extension certificatePolicies", "extension deltaCRLIndicator", "extension extKeyUsage",
    "extension freshestCRL", "extension holdInstructionCode", "extension inhibitAnyPolicy",
    "extension invalidityDate", "extension ipAddrBlocks", "extension issuerAltName",
    "extension issuingDistributionPoint", "extension keyUsage", "extension nameConstraints",
    "extension netscape-base-url", "extension netscape-cert-type", "extension netscape-comment",
    "extension ocsp-archive-cutoff", "extension ocsp-crl", "extension ocsp-nocheck",
    "extension ocsp-nonce", "extension ocsp-response", "extension ocsp-service-locator",
    "extension policyConstraints", "extension policyMappings", "extension privateKeyUsagePeriod",
    "extension signedCertificateTimestamps", "extension subjectAltName",
    "extension subjectInfoAccess", "extension subjectKeyIdentifier", "extension tlsFeature",
    "issuer's key", "key", "moment", "name", "name in a text", "names by kind",
    "number of certificates", "number of entries", "number of extensions", "number of purposes",
    "number of requests", "number of responses", "number of updates", "object: certificate",
    "object: certification-request", "object: crl", "object: ocsp-request",
    "object: ocsp-response", "octets of a key", "octets of an extension", "other names",
    "parameters of PSS", "relative names", "request", "requestor", "responder by key",
    "serial number", "serial number of an entry", "signature", "status of a response",
    "subject's key", "summary of a CRL", "text of a name", "time of a response", "update",
    "usage of a key", "validity", "version", "whether it may issue")

# Only real and hostile files have these.
KINDS_OF_THE_CORPUS = (
    "extension ms-application-policies", "extension ms-ca-key-cert-index-pair",
    "extension ms-certificate-template-name", "extension netscape-ca-policy-url",
    "extension netscape-revocation-url", "extension precertificatePoison",
    "object that is refused")
