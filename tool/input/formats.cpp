#include "input/formats.h"

#include <algorithm>
#include <cctype>

namespace tool {

namespace {

using namespace std::string_view_literals;

/// How data of a format begin, and what is said of them.
struct Format {
  std::string_view start;
  std::string_view text;
};

constexpr Format formats[] = {
    {"\x1F\x8B", "it is packed with gzip: \"gunzip -c FILE | orvelasn1 show\" shows what is in it"},
    {"BZh", "it is packed with bzip2: \"bunzip2 -c FILE | orvelasn1 show\" shows what is in it"},
    {"\xFD"
     "7zXZ\0"sv,
     "it is packed with xz: \"xz -dc FILE | orvelasn1 show\" shows what is in it"},
    {"\x28\xB5\x2F\xFD",
     "it is packed with zstd: \"zstd -dc FILE | orvelasn1 show\" shows what is in it"},
    {"PK\x03\x04",
     "it is a zip archive: \"unzip -p FILE MEMBER | orvelasn1 show\" shows what is "
     "in one of its members"},
    {"7z\xBC\xAF\x27\x1C", "it is a 7z archive: unpack it first"},
    {"\x7F"
     "ELF",
     "it is a program (ELF), which holds no certificate by itself"},
    {"MZ",
     "it is a program for Windows: \"osslsigncode extract-signature -in FILE -out "
     "signature.der\" takes out its signature"},
    {"\xFE\xED\xFE\xED",
     "it is a Java key store (JKS): \"keytool -exportcert -rfc -keystore FILE -alias NAME\" writes "
     "a certificate of it, and \"keytool -list -rfc -keystore FILE\" all"},
    {"\xCE\xCE\xCE\xCE",
     "it is a Java key store (JCEKS): \"keytool -list -rfc -storetype JCEKS -keystore FILE\" "
     "writes its certificates"},
    {"SQLite format 3\0"sv,
     "it is an SQLite database; one of NSS lists its certificates with \"certutil -L -d FOLDER\", "
     "and writes one with \"certutil -L -a -n NAME -d FOLDER\""},
    {"%PDF-", "it is a PDF document: \"pdfsig -dump FILE\" takes out its signatures"},
    {"\x89PNG", "it is a picture (PNG)"},
    {"\xFF\xD8\xFF", "it is a picture (JPEG)"},
    {"ssh-",
     "it is an SSH public key, which is not ASN.1: \"ssh-keygen -e -m PKCS8 -f FILE\" "
     "writes it as PEM"},
    {"ecdsa-sha2-",
     "it is an SSH public key, which is not ASN.1: \"ssh-keygen -e -m PKCS8 -f FILE\" writes it as "
     "PEM"},
    {"sk-ssh-", "it is an SSH public key in a security token, which is not ASN.1"},
    {"sk-ecdsa-", "it is an SSH public key in a security token, which is not ASN.1"},
    {"---- BEGIN SSH2 PUBLIC KEY",
     "it is an SSH public key, which is not ASN.1: \"ssh-keygen -i -f FILE\" reads it"},
    {"PuTTY-User-Key-File-",
     "it is a key of PuTTY: \"puttygen FILE -O private-openssh -o key\" and then \"ssh-keygen -p "
     "-m PKCS8 -f key\" write it as PEM"},
};

constexpr Format labels[] = {
    {"OPENSSH PRIVATE KEY",
     "an OpenSSH key, which is not ASN.1: \"ssh-keygen -p -m PKCS8 -f FILE\" writes it as PKCS #8, "
     "over the file, so keep a copy"},
    {"PGP ", "OpenPGP, which is not ASN.1: \"gpg --list-packets FILE\" shows it"},
    {"SSH2 ", "an SSH key, which is not ASN.1: \"ssh-keygen -i -f FILE\" reads it"},
};

template <size_t count>
std::string answer(const Format (&known)[count], std::string_view data) {
  const auto *const found = std::ranges::find_if(
      known, [data](const Format &format) { return data.starts_with(format.start); });
  return found == std::end(known) ? "" : std::string(found->text);
}

}  // namespace

std::string foreign_format(Octets data) {
  constexpr size_t tar_mark = 257;
  const std::string_view text = text_of(data);
  if (text.size() > tar_mark && text.substr(tar_mark).starts_with("ustar"))
    return "it is a tar archive: \"tar -xOf FILE | orvelasn1 show\" shows what is in its members";
  return answer(formats, text);
}

std::string foreign_label(std::string_view label) { return answer(labels, label); }

std::string kind_of_text(Octets data) {
  std::string start;
  for (const char c : text_of(data)) {
    if (start.empty() && (c == ' ' || (c >= '\t' && c <= '\r'))) continue;
    start += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    if (start.size() == 16) break;
  }
  if (start.starts_with("<!doctype html") || start.starts_with("<html")) return "an HTML page";
  if (start.starts_with("<")) return "XML";
  if (start.starts_with("{") || start.starts_with("[")) return "JSON";
  return "a text";
}

}  // namespace tool
