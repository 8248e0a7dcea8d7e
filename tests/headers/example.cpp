#include <orvelpki.h>

#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <vector>

int main(int argc, char **argv) {
  std::ifstream file(argc == 2 ? argv[1] : "", std::ios::binary);
  const std::vector<uint8_t> der(std::istreambuf_iterator<char>(file), {});
  const uint8_t *const end = der.data() + der.size();
  Certificate *decoded = nullptr;
  if (der.empty() || pki_Certificate_d(der.data(), end, 0, &decoded, 0) == nullptr) return 1;
  const std::unique_ptr<Certificate, void (*)(Certificate *)> c(decoded, pki_Certificate_free);
  std::cout << "subject  " << c->tbsCertificate->subject << "\nissuer   "
            << c->tbsCertificate->issuer << "\nnotAfter "
            << c->tbsCertificate->validity->notAfter->value << '\n';
  std::vector<uint8_t> out(pki_Certificate_e(nullptr, c.get()));
  uint8_t *cursor = out.data();
  const bool same = pki_Certificate_e(&cursor, c.get()) == der.size() && out == der;
  std::cout << (same ? "encodes to the same octets\n" : "does not encode to the same octets\n");
}
