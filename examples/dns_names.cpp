// Prints the DNS names of a certificate in DER, and refuses one with names that cannot be read.
#include <orvelpki.h>

#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <string_view>
#include <vector>

namespace {

/// Prints characters of a stranger: what is no plain character would reach the terminal.
void print(std::string_view text) {
  for (const char c : text) std::cout << (c > ' ' && c < 0x7F ? c : '?');
  std::cout << '\n';
}

void release_names(List *list) { List_free(list, asn1_IA5String_free); }

}  // namespace

int main(int argc, char **argv) {
  std::ifstream file(argc == 2 ? argv[1] : "", std::ios::binary);
  const std::vector<uint8_t> der(std::istreambuf_iterator<char>(file), {});
  Certificate *decoded = nullptr;
  if (der.empty() ||
      pki_Certificate_d(der.data(), der.data() + der.size(), 0, &decoded, 0) == nullptr)
    return 1;
  const std::unique_ptr<Certificate, void (*)(Certificate *)> certificate(decoded,
                                                                          pki_Certificate_free);
  uint32_t unreadable = 0;
  const std::unique_ptr<List, void (*)(List *)> names(pki_dns_names(certificate.get(), &unreadable),
                                                      release_names);
  if (names == nullptr) return 1;
  if (unreadable != 0) {
    std::cout << unreadable << " names cannot be read\n";
    return 1;
  }
  for (int32_t i = 0; i < List_len(names.get()); ++i) {
    const auto *name = static_cast<const IA5String *>(List_get(names.get(), i));
    print({reinterpret_cast<const char *>(name->data), name->length});
  }
}
