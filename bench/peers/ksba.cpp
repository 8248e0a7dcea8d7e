#include <ksba.h>

#include "peer.h"

namespace {

bool read(std::span<const uint8_t> der) {
  ksba_cert_t certificate;
  if (ksba_cert_new(&certificate) != 0) return false;
  const bool taken = ksba_cert_init_from_mem(certificate, der.data(), der.size()) == 0;
  ksba_cert_release(certificate);
  return taken;
}

const bench::Peer ksba({{"libksba " + std::string(ksba_check_version(nullptr)), read}});

}  // namespace
