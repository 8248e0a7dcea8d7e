// Certificates as people have them: a server's, its issuer's and an expired one, made by openssl.
#ifndef ORVELASN1_TESTS_TOOL_BUNDLES_H
#define ORVELASN1_TESTS_TOOL_BUNDLES_H

#include "records.h"

namespace tool_tests {

/// Makes the certificates that docs/json.md and docs/from-openssl.md speak of, and leaves each with
/// its key and its request in the folder.
class Bundles : public Records {
 protected:
  Bundles() {
    file("index.txt", std::string());
    file("serial", std::string("0A1A\n"));
    file("ca.cnf",
         "[ca]\ndefault_ca=a\n[a]\ndatabase=" + path("index.txt") + "\nserial=" + path("serial") +
             "\nnew_certs_dir=" + path("") +
             "\ndefault_md=sha256\npolicy=p\npreserve=yes\nunique_subject=no\n"
             "[p]\ncountryName=optional\norganizationName=optional\ncommonName=optional\n"
             "[none]\n[issuer]\nbasicConstraints=critical,CA:TRUE\n"
             "keyUsage=critical,keyCertSign,cRLSign\nsubjectKeyIdentifier=hash\n"
             "[server]\nkeyUsage=critical,digitalSignature,keyEncipherment\n"
             "extendedKeyUsage=serverAuth,1.2.3.4\nauthorityKeyIdentifier=keyid\n"
             "subjectAltName=DNS:www.example.org,DNS:example.org,IP:192.0.2.1,IP:2001:db8::1,"
             "email:admin@example.org,URI:https://www.example.org/,RID:1.2.3,dirName:some\n"
             "[some]\nC=DE\nCN=One, Some\n");
  }

  std::string request(const std::string &name, const std::string &subject,
                      const std::vector<std::string> &key) const {
    std::vector<std::string> words{"req",    "-new",  "-nodes",  "-utf8",
                                   "-subj",  subject, "-keyout", path(name + ".key"),
                                   "-newkey"};
    words.insert(words.end(), key.begin(), key.end());
    return openssl(words);
  }

  /// A certificate for a request, signed with the key of `issuer`, or with its own.
  std::string sign(const std::string &name, const std::string &request, const std::string &issuer,
                   const std::string &from, const std::string &until,
                   const std::string &extensions) const {
    std::vector<std::string> words{"ca",
                                   "-batch",
                                   "-notext",
                                   "-config",
                                   path("ca.cnf"),
                                   "-in",
                                   file(name + ".csr", request),
                                   "-startdate",
                                   from,
                                   "-enddate",
                                   until,
                                   "-keyfile",
                                   path(issuer + ".key")};
    if (name == issuer)
      words.emplace_back("-selfsign");
    else
      words.insert(words.end(), {"-cert", path(issuer + ".pem")});
    if (!extensions.empty()) words.insert(words.end(), {"-extensions", extensions});
    const std::string pem = openssl(words);
    file(name + ".pem", pem);
    return pem;
  }

  struct Bundle {
    std::string server, issuer, old;
    std::string all() const { return server + issuer + old; }
  };
  Bundle bundle() const {
    Bundle made;
    made.issuer = sign("ca", request("ca", "/C=DE/O=Example, Ltd./CN=Example CA", {"rsa:2048"}),
                       "ca", "20200101000000Z", "20500101000000Z", "issuer");
    made.server =
        sign("server", request("server", "/C=DE/O=Example, Ltd./CN=www.example.org", ec_key), "ca",
             "20200101000000Z", "20400101000000Z", "server");
    made.old = sign("old", request("old", "/CN=old.example.org", ec_key), "old", "20200101000000Z",
                    "20210101000000Z", "");
    return made;
  }
};

}  // namespace tool_tests

#endif
