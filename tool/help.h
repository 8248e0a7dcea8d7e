// What "orvelasn1 --help" and "orvelasn1 COMMAND --help" say after the options.
#ifndef ORVELASN1_TOOL_HELP_H
#define ORVELASN1_TOOL_HELP_H

namespace tool::help {

constexpr const char *overview = R"(Examples:
  orvelasn1 server.pem                     what is in a certificate, a CRL, a request ...
  orvelasn1 show --short /etc/ssl/certs/*  a line or two for each
  orvelasn1 show --json chain.pem | jq .   one JSON object a line
  orvelasn1 tree server.pem                the outline of its octets
  orvelasn1 diff old.pem new.pem           what has changed?
  orvelasn1 crl ca.crl --serial 0A1B       is it revoked?
  orvelasn1 key server.pem server.key      do they belong together?
  orvelasn1 map --fields subject *.pem     a line for each of any number
  orvelasn1 recode --fresh server.der      whether it comes back octet by octet
  orvelasn1 trace server.der               how the decoder reads it
  orvelasn1 name '/c=DE/cn(12)=Example'    the octets of a name
  orvelasn1 oid 2.5.29.15                  what an identifier is
  orvelasn1 types                          what "show" and the like can read

Inputs are PEM, DER, or a text with either in base64, such as JSON or XML, with one
element or many. What an element is, its PEM label or its structure tells, or you do,
with --type. Without a file, or for the file "-", standard input is read. A file without
a command is shown. The status is 0 when all is well, 1 for bad input, and 2 for wrong
usage; that of diff, crl and key is an answer. "orvelasn1 COMMAND --help" tells more about
a command.)";

constexpr const char *show = R"(Examples:
  orvelasn1 show server.pem                    a page for each element
  orvelasn1 show --short *.pem                 a line or two for each
  orvelasn1 show --short --sort notAfter *.pem what expires first comes first
  orvelasn1 show --short --expires-within 30d *.pem || echo "see to these"
  orvelasn1 show --oids server.pem             with the dotted identifiers
  orvelasn1 show --type crl-entry entry.der    a part that stands in no file by itself
  orvelasn1 show --at 2030-01-01 server.pem    will it still be valid then?
  openssl s_client -connect example.org:443 -showcerts </dev/null | orvelasn1 show
  orvelasn1 show --json *.pem | jq -r 'select(.tbsCertificate.validity.daysLeft < 30).pem'

With --expires-within, the status is 0 where nothing expires within that time (from now
on, or from the moment of --at), and 1 where something does, or an input is bad: a cron
job need not look further.

A page is as wide as the terminal, or COLUMNS, and longer ones are shown in PAGER, or
less. Colours are left out with NO_COLOR.

The members of the JSON objects have the names of the library's fields, after some that answer
common questions; certificate.schema.json describes those of certificates. An element that is
refused is an object with the member "error" then, and no message.)";

constexpr const char *tree = R"(Examples:
  orvelasn1 tree server.pem                   where each field stands, and what it holds
  orvelasn1 tree --hex broken.der             with the octets, up to the fault and past it
  orvelasn1 tree --type any data.der          without names from a type
  orvelasn1 tree --path 'tbsCertificate.extensions[subjectAltName]' server.pem
  orvelasn1 tree --path tbsCertificate.subjectPublicKeyInfo --extract server.pem >key.der
  orvelasn1 tree --path 'tbsCertificate.extensions[2].extnValue' --content server.pem |
    orvelasn1 tree --type general-names

A path has the names of fields, and in brackets the numbers of elements or the identifiers that
they begin with; messages about faults have such paths, too. Each line has the offset in the
element, the octets of its header and of its content, the field, the type and a value.)";

constexpr const char *diff = R"(Examples:
  orvelasn1 diff old.pem new.pem                      what has changed?
  orvelasn1 diff --json old.crl new.crl | jq -r .path
  orvelasn1 diff old.crl new.crl | grep -c '^+'
  openssl req -in server.csr -pubkey -noout | orvelasn1 diff - server.pub

The first element of one file is compared with the first of the other, the second with the
second, and so on. Each difference stands under the path of its place: "-" is before what the
first file has, "+" before what the second has. Extensions, entries of a CRL and their like are
compared by their identifiers and numbers, wherever they stand.

The status is that of diff: 0 where there is no difference, 1 where there is one, and 2 where
something cannot be read.)";

constexpr const char *crl = R"(Examples:
  orvelasn1 crl ca.crl                            a summary
  orvelasn1 crl ca.crl --serial 0A:1B             revoked? when? why?
  orvelasn1 crl ca.crl --serial dec:2587          the same in decimal digits
  orvelasn1 crl ca.crl --certificate server.pem   by the certificate
  orvelasn1 crl --json ca.crl | jq .reasons

A serial number is hexadecimal, as 0A1B, 0a:1b or 0x0A1B, or decimal after "dec:". A
certificate is asked for only where the CRL is of its issuer.

The status is that of grep: 0 where a certificate is revoked, 1 where none is, and 2 where that
is not known: what is asked for or the CRL cannot be read to its end, or is of another issuer,
or lists only what has changed. Without a question it is 0, or 2.)";

constexpr const char *key = R"(Examples:
  orvelasn1 key server.pem server.key && echo "they belong together"
  orvelasn1 key /etc/ssl/private/* /etc/ssl/certs/*    what belongs to what?
  orvelasn1 key --json server.pem | jq -r '.pins[]'    the pin, as curl --pinnedpubkey has it

Certificates, requests and keys are sorted by their public key. That of a private key is
computed where the key does not hold it. A pin is the SHA-256 digest of a SubjectPublicKeyInfo.

The status is 0 where all have one key, 1 where there are several, and 2 where that is not
known: an element cannot be read, has no key or an encrypted one.)";

constexpr const char *map = R"(Examples:
  orvelasn1 map bundle.pem                               one JSON object a line
  orvelasn1 map --fields serial,subject,san.dns *.pem    columns with tabs between them
  zstdcat names.zst | orvelasn1 map --in base64 --fields san.dns
  orvelasn1 map --in csv:cert --csv --header --fields notAfter,key.bits certs.csv
  orvelasn1 map --in jsonl:raw --json --fields sha256 objects.jsonl
  orvelasn1 map --in ct --fields san.dns entries.json    the answers of a log to get-entries
  orvelasn1 map --where 'key.kind = "RSA" and key.bits < 2048' --fields file,subject *.pem
  orvelasn1 map --where 'notAfter < now+30d or san.dns ~ "[.]example$"' certs.txt

The input is read as it comes, however large it is, and each element is one line of output, in
the order of the input. Compressed input comes through a pipe, as above. In base64, an element is
a line, and a label before a tab in it is passed through, as the first column or as "id". An
element that cannot be read has a line, too: its JSON has "error", and its last column, which is
always there. The status is 0 all the same, unless --strict asks for another.

A condition compares fields: = != < <= > >= with a number, a text between quotation marks, true,
false, or a date such as 2030-01-31, now or now+30d; ~ searches for an extended regular expression;
has(FIELD) asks whether a field is there; and, or, not and parentheses join them. A field with
several texts meets a condition where one of them does.)";

constexpr const char *recode = R"(Examples:
  orvelasn1 recode server.der && echo "every octet came back"
  orvelasn1 recode --fresh server.pem            from the fields, not the kept octets
  orvelasn1 recode -o server.der server.pem      from PEM to DER)";

constexpr const char *trace = R"(Examples:
  orvelasn1 trace server.der
  orvelasn1 trace broken.der | tail     where did the decoder stop?)";

constexpr const char *name = R"(Examples:
  orvelasn1 name '/c=DE/o(12)=Example//Co/cn(12)=www.example.org'
  orvelasn1 name -o name.der '/c=DE'
  orvelasn1 name --der name.der

A name is a "/" in front of each relative name and a "," between the attributes of one.
An attribute is a short name (gid cn gn ou sp c g i l m n o s t) or a dotted identifier,
the identifier octet of its value in parentheses (19, PrintableString, where there is
none), "=" and the value, with a "/" in front of each "/" and ",".)";

constexpr const char *oid = R"(Examples:
  orvelasn1 oid 2.5.4.3               from the dotted form
  orvelasn1 oid 06:03:55:04:03        from the encoded form
  orvelasn1 oid id_at_commonName      from the name in the registry
  orvelasn1 oid commonName keyUsage   from the names that "show" prints
  orvelasn1 oid --list | sort -k 2    the whole registry)";

constexpr const char *types = R"(Examples:
  orvelasn1 types
  orvelasn1 types | grep -i ocsp

Each line has the name for --type, what the type is, and the labels of PEM blocks that hold
it.)";

}  // namespace tool::help

#endif
