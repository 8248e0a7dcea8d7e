#include <algorithm>
#include <fstream>
#include <iostream>
#include <iterator>
#include <orvelasn1.hpp>

int main(int argc, char **argv) {
  std::ifstream file(argc == 2 ? argv[1] : "", std::ios::binary);
  const std::string der(std::istreambuf_iterator<char>(file), {});
  const auto certificate = orvel::decode<orvel::pki::Certificate>(der);
  if (!certificate) return std::cerr << certificate.error() << '\n', 1;
  std::cout << "subject  " << certificate->subject() << "\nissuer   " << certificate->issuer()
            << "\nnotAfter " << certificate->validity().notAfter() << '\n';
  const bool same =
      std::ranges::equal(orvel::encode(*certificate).value(), std::as_bytes(std::span(der)));
  std::cout << (same ? "encodes to the same octets\n" : "does not encode to the same octets\n");
}
