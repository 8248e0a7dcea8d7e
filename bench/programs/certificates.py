"""Prints the subject, issuer, serial number, dates and DNS names of each certificate of a PEM file, a
line each, or "refused"."""
import base64
import re
import sys
import warnings

from cryptography import x509


def line_of(der):
    certificate = x509.load_der_x509_certificate(der)
    try:
        names = certificate.extensions.get_extension_for_class(
            x509.SubjectAlternativeName).value.get_values_for_type(x509.DNSName)
    except x509.ExtensionNotFound:
        names = []
    fields = (certificate.subject.rfc4514_string(), certificate.issuer.rfc4514_string(),
              f"{certificate.serial_number:x}", certificate.not_valid_before.isoformat() + "Z",
              certificate.not_valid_after.isoformat() + "Z", ",".join(names))
    return "\t".join(fields).replace("\n", "\\n")


def main():
    warnings.simplefilter("ignore")
    with open(sys.argv[1], encoding="ascii") as file:
        text = file.read()
    for block in re.finditer("-----BEGIN CERTIFICATE-----(.*?)-----END", text, re.S):
        try:
            line = line_of(base64.b64decode(block[1]))
        except (ValueError, x509.DuplicateExtension, x509.UnsupportedGeneralNameType):
            line = "refused"
        sys.stdout.write(line + "\n")


main()
