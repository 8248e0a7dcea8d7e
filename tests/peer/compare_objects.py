"""Compares whole objects: certificates, requests, CRLs, OCSP messages."""
import base64
import collections
import hashlib
import re

from cryptography import x509
from cryptography.x509 import ocsp

import compare_accepted as accepted
import compare_der as der
import compare_json as tool
import compare_openssl as openssl
import compare_text as text
import compare_values as values
from compare_der import Refused, Unknown
from compare_values import hexadecimal, load

BOOLEAN, SEQUENCE = 1, 0x30
PSS = "1.2.840.113549.1.1.10"


def bits(element):
    """Returns a BIT STRING as the tool shows one."""
    unused, *octets = der.content(element)
    return {"length": 8 * len(octets) - unused, "data": hexadecimal(bytes(octets))}


# ---- Parts -----------------------------------------------------------------------------------------


def compare_number(report, kind, path, ours, octets):
    report.must_agree(
        kind, path, ours,
        lambda: (tool.number(ours), der.integer(octets)),
        lambda: (tool.number(ours), load(x509.load_der_x509_certificate,
                                         der.certificate(serial=octets)).serial_number))


def compare_name(report, path, ours, octets):
    """Compares a name. OpenSSL leaves out empty relative names; cryptography has sets."""
    ours = tool.name(ours)
    report.compare("relative names", path, len(ours), len(der.inside(octets)))

    def question(peer, form):
        def ask():
            return tuple([form(rdn) for rdn in rdns if rdn] for rdns in (ours, peer(octets)))
        return ask
    report.must_agree("name", path, ours, question(openssl.name, list),
                      question(values.subject, lambda rdn: sorted(set(rdn))))


def compare_name_of(report, fields, name, octets):
    """Compares a field that is a name: as a list, as a text, and its octets."""
    compare_name(report, name, fields[f"{name}Sequence"], octets)
    report.compare("octets", f"{name}Encoded", fields[f"{name}Encoded"], hexadecimal(octets))
    listed = tool.name(fields[f"{name}Sequence"])
    if all(one[2] is not None for rdn in listed for one in rdn):
        report.compare("name in a text", f"{name} in a text", tool.name_of_text(fields[name]),
                       [sorted(rdn) for rdn in listed if rdn])


def compare_time(report, kind, path, ours, octets):
    report.compare("text of a time", path, (ours["kind"], ours["value"]),
                   (octets[0], der.content(octets).decode("latin-1")))
    ours = tool.moment(ours)
    crl = der.crl(updates=[octets])
    report.must_agree(
        kind, path, ours, lambda: (ours, openssl.moment(octets)),
        lambda: (ours, values.utc(load(x509.load_der_x509_crl, crl), "last_update")))


def compare_algorithm(report, path, ours, octets):
    identifier, *parameters = der.inside(octets)
    report.compare("algorithm", path, [ours["algorithm"], ours.get("parameters")],
                   [der.dotted(identifier), hexadecimal(parameters[0]) if parameters else None])
    if ours["algorithm"] == PSS and "decoded" in ours:
        report.compare("parameters of PSS", path, text.pss(ours["decoded"]),
                       " ".join(openssl.algorithm_text(octets).split()))


def compare_key(report, path, facts, info, octets):
    algorithm, key = der.inside(octets)
    compare_algorithm(report, f"{path}.algorithm", info["algorithm"], algorithm)
    report.compare("octets of a key", f"{path}.subjectPublicKey",
                   info["subjectPublicKey"], bits(key))
    ours = {name: facts[name] for name in ("kind", "bits", "curve", "exponent", "modulus", "point")
            if name in facts}
    for name in ("kind", "bits", "curve", "exponent"):
        report.compare("key as a field", f"{path}.{name}", info.get("key" + name.title()),
                       facts.get(name))
    if "curve" in facts:
        report.compare("curve", f"{path}.algorithm", info["algorithm"]["decoded"],
                       {"namedCurve": der.dotted(der.inside(algorithm)[1]),
                        "namedCurveName": facts["curve"]})
    digest = hashlib.sha256(octets).digest()
    report.compare("digests of a key", path, [facts["sha256"], facts["pin"], facts["identifier"]], [
        hexadecimal(digest), "sha256//" + base64.b64encode(digest).decode(),
        hexadecimal(hashlib.sha1(der.content(key)[1:]).digest())])
    if "modulus" in ours:
        ours.update(modulus=int(ours["modulus"], 16), exponent=int(ours["exponent"], 0))
    if ours["kind"] == "DSA":
        ours["point"] = der.integer(bytes.fromhex(ours["point"]))
    report.ask("key", path, lambda: (ours, values.public_key(octets)))


def compare_extension(report, path, ours, octets, place):
    identifier, *rest = der.inside(octets)
    dotted = der.dotted(identifier)
    path += f"[{ours.get('extnIDName', dotted)}]"
    critical = rest[0][0] == BOOLEAN and der.content(rest[0]) != b"\0"
    report.compare("octets of an extension", path,
                   (ours["extnID"], ours["critical"], ours["extnValue"]),
                   (dotted, critical, hexadecimal(der.content(rest[-1]))))
    decoded = tool.extension_value(dotted, ours.get("decoded"))
    shown = {"malformed": ours["malformed"]} if "malformed" in ours else decoded

    known = True

    def value():
        nonlocal known
        try:
            return shown, values.extension_value(octets, place)
        except Refused as refusal:
            known = not isinstance(refusal, Unknown)
            theirs = openssl.extension_text(octets)
            return shown if "malformed" in ours else text.text_of(dotted, decoded), theirs
    answers = report.ask(f"extension {ours.get('extnIDName', dotted)}", path, value)
    if not answers and known and not tool.is_malformed(ours):
        report.differ(path, decoded, "what no peer reads")


def compare_extensions(report, path, ours, octets, place):
    """Compares lists of extensions; `octets` are those of the list, or None without one."""
    ours = ours or []
    theirs = der.inside(octets) if octets else []
    report.compare("number of extensions", path, len(ours), len(theirs))
    for pair in zip(ours, theirs):
        compare_extension(report, path, *pair, place)


def tagged(parts, tag):
    """Returns the element inside the part with this tag; None without such a part."""
    found = [part for part in parts if part[0] == tag]
    return der.inside(found[0])[0] if found else None


def compare_signature(report, ours, algorithm, signature, name="signature"):
    compare_algorithm(report, "signatureAlgorithm", ours["signatureAlgorithm"], algorithm)
    report.compare("signature", name, ours[name], bits(signature))


# ---- Objects ---------------------------------------------------------------------------------------


def compare_digests(report, ours, octets):
    report.compare("digests", "fingerprints", ours["fingerprints"], {
        "sha256": hexadecimal(hashlib.sha256(octets).digest()),
        "sha1": hexadecimal(hashlib.sha1(octets).digest())})


def compare_facts(report, ours, octets, extensions):
    """Compares what stands in front of the fields: the answers to common questions."""
    listed = {}
    for extension in extensions:
        listed.setdefault(der.dotted(der.inside(extension)[0]), extension)

    def value(identifier):
        return values.extension_value(listed[identifier], values.in_certificate) \
            if identifier in listed else None

    def names_by_kind():
        names = value("2.5.29.17") or []
        kinds = {"mail": 1, "dns": 2, "uri": 6, "ip": 7}
        return ({name: ours["sans"][name] for name in kinds},
                {name: [one["value"] for one in names if one["kind"] == kind]
                 for name, kind in kinds.items()})

    def may_issue():
        constraints, usage = value("2.5.29.19"), value("2.5.29.15")
        return ours["isCA"], bool(constraints and constraints["cA"] and
                                  (usage is None or "keyCertSign" in usage))

    def purposes():
        return len(ours["extKeyUsage"] or []), len(value("2.5.29.37") or [])

    def issuers_key():
        found = value("2.5.29.35") or {}
        return ours["authorityKeyIdentifier"], found.get("keyIdentifier")
    report.ask("names by kind", "sans", names_by_kind)
    # Those of the fields are compared with the peers'.
    report.compare("other names", "sans", ours["sans"]["other"], [
        name for extension in ours["tbsCertificate"].get("extensions", [])
        if extension["extnID"] == "2.5.29.17" for name in extension.get("decoded", [])
        if name.get("kind") in (0, 3, 5, 8)])
    report.ask("whether it may issue", "isCA", may_issue)
    report.ask("usage of a key", "keyUsage", lambda: (ours["keyUsage"], value("2.5.29.15")))
    report.ask("number of purposes", "extKeyUsage", purposes)
    report.ask("subject's key", "subjectKeyIdentifier",
               lambda: (ours["subjectKeyIdentifier"], value("2.5.29.14")))
    report.ask("issuer's key", "authorityKeyIdentifier", issuers_key)


def compare_name_text(report, path, ours, octets):
    report.ask("text of a name", path, lambda: (ours, values.subject_text(octets)))


def compare_certificate(report, ours, octets):
    tbs, algorithm, signature = der.inside(octets)
    parts = der.inside(tbs)
    fields = ours["tbsCertificate"]
    compare_digests(report, ours, octets)
    report.compare("octets", "tbsEncoded", ours["tbsEncoded"], hexadecimal(tbs))
    version = der.integer(der.inside(parts.pop(0))[0]) if parts[0][0] == 0xA0 else 0
    serial, inner, issuer, validity, subject, key, *more = parts
    report.compare("version", "version", [ours["version"], fields.get("version", 0)],
                   [version + 1 if version in range(3) else None, version])
    compare_number(report, "serial number", "serialNumber", fields["serialNumber"], serial)
    compare_algorithm(report, "signature", fields["signature"], inner)
    compare_signature(report, ours, algorithm, signature, "signatureValue")
    compare_name_of(report, fields, "issuer", issuer)
    compare_name_of(report, fields, "subject", subject)
    compare_name_text(report, "subjectRfc4514", ours["subjectRfc4514"], subject)
    compare_name_text(report, "issuerRfc4514", ours["issuerRfc4514"], issuer)
    for part, time in zip(("notBefore", "notAfter"), der.inside(validity)):
        compare_time(report, "validity", part, fields["validity"][part], time)
        report.compare("moment", part, ours[part], fields["validity"][part].get("time"))
    compare_key(report, "key", ours["key"], fields["subjectPublicKeyInfo"], key)
    extensions = tagged(more, 0xA3)
    compare_extensions(report, "extensions", fields.get("extensions"), extensions,
                       values.in_certificate)
    compare_facts(report, ours, octets, der.inside(extensions) if extensions else [])


def compare_request(report, ours, octets):
    info, algorithm, signature = der.inside(octets)
    fields = ours["certificationRequestInfo"]
    report.compare("octets", "tbsEncoded", ours["tbsEncoded"], hexadecimal(info))
    version, subject, key, attributes = der.inside(info)
    report.compare("version", "version", [ours["version"], fields["version"]],
                   [der.integer(version) + 1, der.integer(version)])
    compare_signature(report, ours, algorithm, signature)
    compare_name_of(report, fields, "subject", subject)
    compare_key(report, "key", ours["key"], fields["subjectPKInfo"], key)
    for one, attribute in zip(fields["attributes"], der.inside(attributes)):
        kind, held = der.inside(attribute)
        report.compare("attribute", "attributes", (one["type"], one["values"]),
                       (der.dotted(kind), [hexadecimal(value) for value in der.inside(held)]))
        if isinstance(one.get("decoded"), list):
            compare_extensions(report, "requested", one["decoded"], der.inside(held)[0],
                               values.in_certificate)
    request = load(x509.load_der_x509_csr, octets)
    report.compare("request", "request", [
        bool(fields["attributes"]), ours["signatureAlgorithm"]["algorithm"]],
        [len(request.extensions) > 0, request.signature_algorithm_oid.dotted_string])


def compare_entry(report, path, ours, octets):
    serial, date, *more = der.inside(octets)
    compare_number(report, "serial number of an entry", path, ours["userCertificate"], serial)
    compare_time(report, "date of an entry", path, ours["revocationDate"], date)
    if more or "crlEntryExtensions" in ours:
        compare_extensions(report, path, ours.get("crlEntryExtensions"),
                           more[0] if more else None, values.in_crl_entry)


def compare_crl(report, ours, octets):
    tbs, algorithm, signature = der.inside(octets)
    parts = der.inside(tbs)
    fields = ours["tbsCertList"]
    compare_digests(report, ours, octets)
    report.compare("octets", "tbsEncoded", ours["tbsEncoded"], hexadecimal(tbs))
    version = der.integer(parts.pop(0)) if parts[0][0] == 2 else None
    inner, issuer, *rest = parts
    report.compare("version", "version", fields.get("version"), version)
    compare_algorithm(report, "signature", fields["signature"], inner)
    compare_signature(report, ours, algorithm, signature, "signatureValue")
    compare_name_of(report, fields, "issuer", issuer)
    times = [part for part in rest if part[0] in (0x17, 0x18)]
    updates = [name for name in ("thisUpdate", "nextUpdate") if name in fields]
    report.compare("number of updates", "updates", len(updates), len(times))
    for name, time in zip(updates, times):
        compare_time(report, "update", name, fields[name], time)
    listed = [part for part in rest if part[0] == SEQUENCE]
    entries = der.inside(listed[0]) if listed else []
    revoked = fields.get("revokedCertificates") or []
    report.compare("number of entries", "revokedCertificates", len(revoked), len(entries))
    for number, pair in enumerate(zip(revoked, entries)):
        compare_entry(report, f"revokedCertificates[{number}]", *pair)
    compare_extensions(report, "crlExtensions", fields.get("crlExtensions"), tagged(rest, 0xA0),
                       values.in_crl)
    report.ask("CRL as a whole", "revokedCertificates", lambda: (
        [reason_of(entry) for entry in revoked],
        [(entry.serial_number, values.utc(entry, "revocation_date"), values.reason_of(entry))
         for entry in load(list, load(x509.load_der_x509_crl, octets))]))


def compare_search(report, ours, octets):
    """Compares what the command `crl` finds, a summary and an answer for each serial number."""
    try:
        entries = load(list, load(x509.load_der_x509_crl, octets))
    except Refused:
        report.alone["summary of a CRL"] += 1
        return
    summary, *answers = ours
    dates = sorted(values.utc(entry, "revocation_date") for entry in entries) or [None]
    reasons = collections.Counter(values.reason_of(entry) or "none" for entry in entries)
    report.compare("summary of a CRL", "crl", [
        summary["entries"], summary["reasons"], tool.iso(summary["firstRevocation"]),
        tool.iso(summary["lastRevocation"])], [len(entries), dict(reasons), dates[0], dates[-1]])
    by_serial = {entry.serial_number: entry for entry in entries}
    for answer in answers:
        entry = by_serial[tool.number(answer["serialNumber"])]
        reason = values.reason_of(entry)
        report.compare("answer of crl", "crl", [
            answer["revoked"], tool.iso(answer["revocationDate"]), answer["reason"]],
            [reason != "removeFromCRL", values.utc(entry, "revocation_date"), reason])


def reason_of(entry):
    """Returns the serial number, the date and the reason of an entry."""
    reasons = [extension.get("decoded") for extension in entry.get("crlEntryExtensions", [])
               if extension["extnID"] == "2.5.29.21"]
    return (tool.number(entry["userCertificate"]), tool.moment(entry["revocationDate"]),
            reasons[0] if reasons else None)


def compare_certificate_id(report, path, ours, octets):
    algorithm, name, key, serial = der.inside(octets)
    compare_algorithm(report, path, ours["hashAlgorithm"], algorithm)
    compare_number(report, "serial number", path, ours["serialNumber"], serial)
    one = ocsp.load_der_ocsp_request(der.ocsp_request(octets))
    report.compare("certificate of OCSP", path, [
        ours["hashAlgorithm"]["algorithmName"], ours["issuerNameHash"], ours["issuerKeyHash"],
        tool.number(ours["serialNumber"])],
        [one.hash_algorithm.name, hexadecimal(one.issuer_name_hash),
         hexadecimal(one.issuer_key_hash), one.serial_number])


def compare_ocsp_request(report, ours, octets):
    tbs, *signed = der.inside(octets)
    parts = der.inside(tbs)
    fields = ours["tbsRequest"]
    (requests,) = [part for part in parts if part[0] == SEQUENCE]
    listed = der.inside(requests)
    report.compare("number of requests", "requestList", len(fields["requestList"]), len(listed))
    for number, (one, request) in enumerate(zip(fields["requestList"], listed)):
        compare_certificate_id(report, f"requestList[{number}]", one["reqCert"],
                               der.inside(request)[0])
    name = tagged(parts, 0xA1)  # a GeneralName
    report.compare("requestor", "requestorName", tool.comparable(fields.get("requestorName")),
                   name and {"kind": 4, "value": openssl.name(der.inside(name)[0])})
    compare_extensions(report, "requestExtensions", fields.get("requestExtensions"),
                       tagged(parts, 0xA2), values.in_ocsp_request)
    if signed:
        algorithm, signature, *certificates = der.inside(der.inside(signed[0])[0])
        compare_signature(report, ours["optionalSignature"], algorithm, signature)
        compare_certificates(report, ours["optionalSignature"].get("certs"), certificates)


def compare_certificates(report, ours, certificates):
    listed = der.inside(tagged(certificates, 0xA0)) if certificates else []
    report.compare("number of certificates", "certs", len(ours or []), len(listed))
    for pair in zip(ours or [], listed):
        compare_certificate(report, *pair)


STATUSES = {"SUCCESSFUL": "successful", "MALFORMED_REQUEST": "malformedRequest",
            "INTERNAL_ERROR": "internalError", "TRY_LATER": "tryLater",
            "SIG_REQUIRED": "sigRequired", "UNAUTHORIZED": "unauthorized"}


def compare_single_response(report, path, ours, octets, peer):
    certificate, _, _, *more = der.inside(octets)
    compare_certificate_id(report, path, ours["certID"], certificate)
    status = ours["certStatus"]
    revoked = status.get("revoked", {})
    report.compare(f"OCSP status {status['status']}", path, [
        status["status"], tool.comparable(revoked.get("revocationTime")),
        revoked.get("revocationReason"), tool.moment(ours["thisUpdate"]),
        tool.comparable(ours.get("nextUpdate"))],
        [peer.certificate_status.name.lower(), values.utc(peer, "revocation_time"),
         peer.revocation_reason and peer.revocation_reason.value, values.utc(peer, "this_update"),
         values.utc(peer, "next_update")])
    compare_extensions(report, path, ours.get("singleExtensions"), tagged(more, 0xA1),
                       values.in_crl_entry)


def compare_ocsp_response(report, ours, octets):
    peer = load(ocsp.load_der_ocsp_response, octets)
    report.compare("status of a response", "responseStatus", ours["responseStatus"],
                   STATUSES[peer.response_status.name])
    if ours["responseStatus"] != "successful":
        return
    basic = der.content(der.inside(der.inside(der.inside(octets)[1])[0])[1])
    data, algorithm, signature, *certificates = der.inside(basic)
    fields = ours["responseBytes"]["decoded"]
    response = fields["tbsResponseData"]
    parts = der.inside(data)
    (responses,) = [part for part in parts if part[0] == SEQUENCE]
    before, after = parts[:parts.index(responses)], parts[parts.index(responses):]
    responder = response["responderID"]
    if peer.responder_name is None:
        report.compare("responder by key", "responderID", responder["byKey"],
                       hexadecimal(peer.responder_key_hash))
    else:
        compare_name(report, "responderID", responder["byName"], tagged(before, 0xA1))
    report.compare("time of a response", "producedAt", tool.moment(response["producedAt"]),
                   values.utc(peer, "produced_at"))
    listed, peers = der.inside(responses), list(peer.responses)
    report.compare("number of responses", "responses", [len(response["responses"])] * 2,
                   [len(listed), len(peers)])
    for number, three in enumerate(zip(response["responses"], listed, peers)):
        compare_single_response(report, f"responses[{number}]", *three)
    compare_extensions(report, "responseExtensions", response.get("responseExtensions"),
                       tagged(after, 0xA1), values.in_ocsp_request)
    compare_signature(report, fields, algorithm, signature)
    compare_certificates(report, fields.get("certs"), certificates)


def spelled(text):
    """Returns the letters and digits of a name: OpenSSL has other blanks, hyphens and capitals."""
    return re.sub(r"[^a-z0-9]", "", text.lower())


def compare_labels(report, ours):
    """Compares the names of identifiers with those that OpenSSL has, if it has one."""
    for value, label in set(tool.named(ours)):
        if isinstance(value, int):
            report.compare("kind of a name", "kindName", label, tool.KINDS_OF_NAMES[value])
            continue
        theirs = openssl.identifier_names(value)
        if accepted.NAMES.get(value) != label and theirs:
            report.compare("name of an identifier", value, spelled(label),
                           spelled(label if spelled(label) in map(spelled, theirs) else theirs[0]))


OBJECTS = {
    "certificate": ("X509", compare_certificate),
    "certification-request": ("X509_REQ", compare_request),
    "crl": ("X509_CRL", compare_crl),
    "ocsp-request": ("OCSP_REQUEST", compare_ocsp_request),
    "ocsp-response": ("OCSP_RESPONSE", compare_ocsp_response)}


def is_object(kind, octets):
    """Whether OpenSSL decodes these octets as an object of a kind."""
    return openssl.accepts(OBJECTS[kind][0], octets)


def compare_object(report, ours, octets):
    """Compares what the tool shows of an object, a line of JSON, with what the peers read."""
    try:
        OBJECTS[ours["type"]][1](report, ours, der.first(octets))
        compare_labels(report, ours)
    except (Refused, AttributeError, IndexError, KeyError, TypeError, ValueError) as error:
        report.differ("", ours["type"], f"what no peer takes apart: {error!r}")
