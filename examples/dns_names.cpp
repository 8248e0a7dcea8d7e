// Prints the DNS names of a certificate in DER, and refuses one with names that cannot be read.
#include <fstream>
#include <iostream>
#include <iterator>
#include <orvelasn1.hpp>

int main(int argc, char **argv) {
  std::ifstream file(argc == 2 ? argv[1] : "", std::ios::binary);
  const std::string der(std::istreambuf_iterator<char>(file), {});
  const auto certificate = orvel::decode<orvel::pki::Certificate>(der);
  if (!certificate) return std::cerr << certificate.error() << '\n', 1;
  const auto names = orvel::dns_names(*certificate);
  if (!names) return std::cerr << names.error() << '\n', 1;
  if (names->unreadable() != 0) {
    std::cout << names->unreadable() << " names cannot be read\n";
    return 1;
  }
  // Characters of a stranger: quoted() escapes what must not reach a terminal.
  for (const std::string_view name : *names) std::cout << orvel::quoted(name) << '\n';
}
