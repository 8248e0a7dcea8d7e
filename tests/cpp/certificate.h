// A certificate that openssl made, version 3.0.17:
//
//   openssl genpkey -algorithm ed25519 -out key.pem
//   openssl req -new -x509 -key key.pem -config file -extensions v3 -days 36500
//           -subj '/C=DE/O=A, B/CN=Some One' -set_serial 0x0A1B2C3D4E5F60718293 -outform der
//
// The file has basicConstraints = critical,CA:TRUE,pathlen:3; keyUsage =
// critical,keyCertSign,cRLSign; subjectKeyIdentifier = hash; and as alternative names a DNS name, a
// mail address, a URI, an IP address, a registered identifier, a directory name and another name.
#ifndef ORVELASN1_TESTS_CPP_CERTIFICATE_H
#define ORVELASN1_TESTS_CPP_CERTIFICATE_H

#include <octets.h>

namespace support {

inline const Bytes some_certificate =
    hex("308201c030820172a003020102020a0a1b2c3d4e5f60718293300506032b"
        "6570302f310b3009060355040613024445310d300b060355040a0c04412c"
        "20423111300f06035504030c08536f6d65204f6e653020170d3236313132"
        "333032303935305a180f32313236313033303032303935305a302f310b30"
        "09060355040613024445310d300b060355040a0c04412c20423111300f06"
        "035504030c08536f6d65204f6e65302a300506032b657003210057c7ab55"
        "2d4355be15f4660c48b9c3b82c87d06fed9171a3ff0708cebb202075a381"
        "a73081a430120603551d130101ff040830060101ff020103300e0603551d"
        "0f0101ff040403020106305f0603551d11045830568209612e6578616d70"
        "6c65810d62406578616d706c652e6f7267861268747470733a2f2f632e65"
        "78616d706c652f8704c000020788032a0304a410300e310c300a06035504"
        "030c03446972a00906022a03a0030c0178301d0603551d0e04160414a3d4"
        "c7bdb1ccd16db435292774d65e720098fac0300506032b65700341007828"
        "f2a69326f4c520460fdba46cd8452c115be5ec6b422e5d0d72ca435aa23d"
        "225d8e11678700c0cfde5713d1687843ed47e35f2febc05c2ab81c15bc17"
        "d80a");

}  // namespace support

#endif
