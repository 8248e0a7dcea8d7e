"""Makes objects with openssl: certificates, requests, CRLs and OCSP messages, with all that it puts into
them. What it does not put into them is made by hand.
"""
import os
import subprocess

import compare_der as der

CONFIGURATION = """
[req]
distinguished_name = name
prompt = no
string_mask = utf8only
utf8 = yes
[name]
C = DE
ST = Bayern
L = M\u00fcnchen
O = Example, Ltd. / "Quoted"
0.OU = One
1.OU = Two
+CN = www.example.org
emailAddress = who@example.org
serialNumber = 12/34
1.DC = org
2.DC = example
1.2.3.4 = \u20ac
[latin]
string_mask = default
[ca]
default_ca = authority
[authority]
database = index
default_md = sha256
crlnumber = number
default_crl_days = 30
[names]
email.1 = a@example.org
DNS.1 = *.example.org
DNS.2 = example.org
URI.1 = https://[2001:db8::1]/a?b=c,d
IP.1 = 192.0.2.1
IP.2 = 2001:db8::1
IP.3 = ::
RID.1 = 1.2.3.4
dirName.1 = directory
otherName.1 = 1.3.6.1.4.1.311.20.2.3;UTF8:user@example.org
otherName.2 = 1.2.3.4;IA5:some text
otherName.3 = 2.999.1;INTEGER:5
[directory]
C = DE
O = A/B, C
+OU = Joined
CN = \u00fc
[all]
basicConstraints = critical, CA:TRUE, pathlen:3
keyUsage = critical, digitalSignature, nonRepudiation, keyEncipherment, dataEncipherment, \
keyAgreement, keyCertSign, cRLSign, encipherOnly, decipherOnly
extendedKeyUsage = critical, serverAuth, clientAuth, codeSigning, emailProtection, timeStamping, \
OCSPSigning, msSGC, 1.2.3.4
subjectKeyIdentifier = hash
authorityKeyIdentifier = keyid:always, issuer:always
subjectAltName = @names
issuerAltName = email:b@example.org, DNS:issuer.example.org, RID:1.2.3.4
authorityInfoAccess = OCSP;URI:http://ocsp.example.org/, caIssuers;DNS:ca.example.org, \
1.2.3.4;IP:192.0.2.7
subjectInfoAccess = caRepository;URI:http://example.org/, 1.3.6.1.5.5.7.48.3;email:c@example.org
crlDistributionPoints = point, issued, relative
freshestCRL = URI:http://example.org/delta.crl
certificatePolicies = 1.2.3.4, anyPolicy, @policy
policyMappings = 1.2.3.4:1.2.3.5, 2.5.29.32.1:1.3.6.1.4.1.4294967296
policyConstraints = critical, requireExplicitPolicy:3, inhibitPolicyMapping:0
inhibitAnyPolicy = critical, 2
nameConstraints = critical, permitted;DNS:example.org, permitted;email:.example.org, \
permitted;IP:192.0.2.0/255.255.255.0, permitted;dirName:directory, excluded;URI:.example.com, \
excluded;IP:2001:db8::/ffff:ffff::, excluded;RID:1.2.3
tlsfeature = status_request, status_request_v2
noCheck = ignored
privateKeyUsagePeriod = ASN1:SEQUENCE:usage_period
sbgp-ipAddrBlock = critical, @blocks
sbgp-autonomousSysNum = critical, AS:64496-64511, AS:65000, RDI:inherit
nsComment = A comment
nsCertType = client, server, email, objsign, reserved, sslCA, emailCA, objCA
nsBaseUrl = http://example.org/
1.2.3.4.5 = ASN1:SEQUENCE:period
[policy]
policyIdentifier = 1.3.5.8
CPS.1 = http://example.org/cps
userNotice.1 = @notice
userNotice.2 = @short
[notice]
explicitText = UTF8:Read th\u00efs
organization = Organisation
noticeNumbers = 1, 2, 70000
[short]
explicitText = Only this
[point]
fullname = URI:http://example.org/ca.crl, DNS:crl.example.org, dirName:directory
reasons = keyCompromise, CACompromise
[issued]
CRLissuer = dirName:directory
reasons = affiliationChanged, superseded, cessationOfOperation, certificateHold, \
privilegeWithdrawn, AACompromise
[relative]
relativename = relative_name
CRLissuer = dirName:directory
[relative_name]
CN = relative
+OU = both
[period]
time = GENERALIZEDTIME:20260101000000Z
[usage_period]
from = IMPLICIT:0, GENERALIZEDTIME:20260101000000Z
until = IMPLICIT:1, GENERALIZEDTIME:20270102030405Z
[blocks]
IPv4.0 = 10.0.0.0/8
IPv4.1 = 192.0.2.1-192.0.2.77
IPv6.0 = 2001:db8::/32
IPv6.1 = 2001:db9:1::-2001:db9:1::ff
[plain]
basicConstraints = CA:FALSE
keyUsage = digitalSignature
extendedKeyUsage = OCSPSigning
[ocsp]
1.3.6.1.5.5.7.48.1.3 = ASN1:SEQUENCE:crl_identifier
1.3.6.1.5.5.7.48.1.4 = ASN1:SEQUENCE:response_types
1.3.6.1.5.5.7.48.1.6 = ASN1:GENERALIZEDTIME:20200102030405Z
1.3.6.1.5.5.7.48.1.7 = ASN1:SEQUENCE:service
[crl_identifier]
url = EXPLICIT:0, IA5STRING:http://example.org/ca.crl
number = EXPLICIT:1, INTEGER:4096
time = EXPLICIT:2, GENERALIZEDTIME:20260102030405Z
[response_types]
basic = OID:1.3.6.1.5.5.7.48.1.1
other = OID:1.2.3.4
[service]
issuer = SEQUENCE:issuer
locator = SEQUENCE:accesses
[issuer]
country = SET:countries
[countries]
one = SEQUENCE:country
[country]
type = OID:2.5.4.6
value = PRINTABLESTRING:DE
[accesses]
one = SEQUENCE:access
[access]
method = OID:1.3.6.1.5.5.7.48.1
location = IMPLICIT:6, IA5STRING:http://ocsp.example.org/
[requested]
subjectAltName = @names
keyUsage = digitalSignature
[inherited]
sbgp-ipAddrBlock = IPv4:inherit, IPv6-SAFI:1:inherit
sbgp-autonomousSysNum = AS:inherit
certificatePolicies = 2.25.329800735698586629295641978511506172918, 2.999.4294967296
subjectAltName = RID:2.25.329800735698586629295641978511506172918, DNS:example.org
[crl]
authorityKeyIdentifier = keyid:always, issuer:always
issuerAltName = DNS:issuer.example.org
issuingDistributionPoint = critical, @issuing
freshestCRL = URI:http://example.org/delta.crl
[issuing]
fullname = URI:http://example.org/ca.crl
indirectCRL = TRUE
onlysomereasons = keyCompromise, CACompromise
[delta]
issuingDistributionPoint = critical, @issuing_users
2.5.29.27 = critical, ASN1:INTEGER:4096
[issuing_users]
relativename = relative_name
onlyuser = TRUE
[issuing_cas]
onlyCA = TRUE
[cas]
issuingDistributionPoint = critical, @issuing_cas
[attributes]
issuingDistributionPoint = critical, @issuing_attributes
[issuing_attributes]
onlyAA = TRUE
"""

REASONS = ("", ",unspecified", ",keyCompromise", ",CACompromise", ",affiliationChanged",
           ",superseded", ",cessationOfOperation", ",removeFromCRL", ",certificateHold",
           ",holdInstruction,holdInstructionReject", ",keyTime,20250101000000Z",
           ",CAkeyTime,20250102030405Z")


class Maker:
    """Runs openssl in a folder."""

    def __init__(self, folder):
        self.folder = folder
        self.made = []
        (folder / "openssl.cnf").write_text(CONFIGURATION, encoding="utf-8")

    def run(self, *words):
        process = subprocess.run(["openssl", *map(str, words)], cwd=self.folder, check=False,
                                 env={**os.environ, "OPENSSL_CONF": "openssl.cnf"},
                                 stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                 stderr=subprocess.STDOUT)
        if process.returncode != 0:
            raise RuntimeError(f"openssl {' '.join(map(str, words))}: {process.stdout.decode()}")

    def make(self, name, *words):
        """Makes a file, which is to be compared."""
        self.run(*words, "-out", name)
        self.made.append(self.folder / name)

    def write(self, name, octets):
        """Writes a file, which is to be compared."""
        (self.folder / name).write_bytes(octets)
        self.made.append(self.folder / name)

    def certificates(self):
        keys = {"rsa": ("RSA", "rsa_keygen_bits:1024"), "pss": ("RSA-PSS", "rsa_keygen_bits:1024"),
                "p256": ("EC", "ec_paramgen_curve:P-256"),
                "p521": ("EC", "ec_paramgen_curve:P-521"),
                "brainpool": ("EC", "ec_paramgen_curve:brainpoolP256r1"),
                "ed25519": ("ED25519",), "ed448": ("ED448",), "x25519": ("X25519",)}
        for name, (algorithm, *options) in keys.items():
            self.run("genpkey", "-algorithm", algorithm, "-out", f"{name}.key",
                     *(word for option in options for word in ("-pkeyopt", option)))
        for name, key, extensions, *more in (
                ("ca", "p256", "all"),
                ("rsa", "rsa", "inherited", "-sha384", "-set_serial", "-129"),
                ("long_serial", "p521", "plain", "-set_serial", "0x" + 19 * "ff"),
                ("zero_serial", "ed25519", "plain", "-set_serial", "0"),
                ("pss_key", "pss", "plain"), ("brainpool", "brainpool", "plain"),
                ("ed448", "ed448", "plain"), ("ocsp", "ed25519", "ocsp"),
                ("later", "rsa", "plain", "-days", "20000"),
                ("pss", "rsa", "plain", "-sha256", "-sigopt", "rsa_padding_mode:pss", "-sigopt",
                 "rsa_pss_saltlen:20")):
            self.make(f"{name}.pem", "req", "-x509", "-new", "-key", f"{key}.key", "-extensions",
                      extensions, *more)
        self.run("pkey", "-in", "x25519.key", "-pubout", "-out", "x25519.pub")
        self.make("x25519.pem", "x509", "-new", "-force_pubkey", "x25519.pub", "-subj", "/CN=x",
                  "-CA", "ca.pem", "-CAkey", "p256.key", "-set_serial", "5")

    def requests(self):
        self.make("request.pem", "req", "-new", "-key", "p256.key", "-reqexts", "requested")
        self.make("plain_request.pem", "req", "-new", "-key", "rsa.key", "-subj", "/CN=only")

    def crls(self):
        revoked = [f"R\t350101000000Z\t2601{day:02}010203Z{reason}\t{0x80 + day:X}\tunknown\t/CN=x\n"
                   for day, reason in enumerate(REASONS, 1)]
        (self.folder / "index").write_text("V\t350101000000Z\t\t05\tunknown\t/CN=x\n"
                                           + "".join(revoked))
        (self.folder / "number").write_text("0123456789ABCDEF\n")
        for extensions in ("crl", "delta", "cas", "attributes"):
            self.make(f"{extensions}.crl.pem", "ca", "-gencrl", "-cert", "ca.pem", "-keyfile",
                      "p256.key", "-crlexts", extensions)
        (self.folder / "index").write_text("")
        self.make("empty.crl.pem", "ca", "-gencrl", "-cert", "ca.pem", "-keyfile", "p256.key")
        (self.folder / "index").write_text("V\t350101000000Z\t\t05\tunknown\t/CN=x\n"
                                           + "".join(revoked))

    def ocsp_messages(self):
        """Makes a request for a good, an unknown and a few revoked certificates, and the responses."""
        serials = ("0x5", "0x6", "0x81", "0x82", "0x83", "0x88", "0x89", "0x8b")
        asked = [word for serial in serials for word in ("-serial", serial)]

        def ask(name, *words):
            self.run("ocsp", "-issuer", "ca.pem", *words, "-reqout", name)
            self.made.append(self.folder / name)

        def answer(name, request, *words):
            self.run("ocsp", "-index", "index", "-CA", "ca.pem", "-rsigner", "ca.pem", "-rkey",
                     "p256.key", "-reqin", request, "-respout", name, *words)
            self.made.append(self.folder / name)
        ask("many.request.der", *asked, "-no_nonce")
        ask("signed.request.der", "-sha256", "-serial", "0x5", "-signer", "ca.pem", "-signkey",
            "p256.key")
        answer("many.response.der", "many.request.der", "-ndays", "7")
        for status in (1, 2, 3, 5, 6):
            self.write(f"{status}.response.der", bytes([0x30, 3, 0x0A, 1, status]))
        answer("nonce.response.der", "signed.request.der", "-resp_key_id", "-resp_no_certs")

    def by_hand(self):
        """Makes what only cryptography reads: who issued a revoked certificate, and timestamps."""
        country = der.wrap(0x30, der.wrap(6, bytes([0x55, 4, 6])), der.wrap(0x13, b"DE"))
        issuer = der.wrap(0x30, der.wrap(0xA4, der.wrap(0x30, der.wrap(0x31, country))),
                          der.wrap(0x86, b"http://ca.example.org/"))
        entry = der.crl_entry(der.extension(bytes([0x55, 0x1D, 29]), issuer, critical=True))
        self.write("indirect.crl.der", der.crl(entries=[entry]))

        def counted(octets):
            return len(octets).to_bytes(2, "big") + octets
        # RFC 6962, 3.2 and 3.3: version, log, milliseconds, extensions, hash, signature.
        stamps = b"".join(counted(bytes([0]) + bytes(range(32)) + moment.to_bytes(8, "big")
                                  + counted(more) + bytes(algorithms) + counted(b"\x30\x00"))
                          for moment, more, algorithms in ((1700000000123, b"", (4, 3)),
                                                           (253402300799999, b"\1\2", (6, 1))))
        log = bytes.fromhex("2B06010401D679020402")
        self.write("timestamps.der", der.certificate(extensions=[
            der.extension(log, der.wrap(4, counted(stamps)))]))


def objects(folder):
    """Makes all objects in a folder and returns their files."""
    maker = Maker(folder)
    maker.certificates()
    maker.requests()
    maker.crls()
    maker.ocsp_messages()
    maker.by_hand()
    return maker.made
