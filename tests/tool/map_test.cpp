// "orvelasn1 map": a line for each element, whatever the input is made of and whatever is in it.
#include "map.h"

#include <sys/ioctl.h>

#include <functional>

namespace map_test {

namespace {

using namespace tool_tests;

std::string pem(const Bytes &octets) {
  std::string out = "-----BEGIN CERTIFICATE-----\n";
  const std::string text = base64(octets);
  for (size_t i = 0; i < text.size(); i += 64) out += text.substr(i, 64) + "\n";
  return out + "-----END CERTIFICATE-----\n";
}

/// The number of octets in three octets, and the octets (RFC 8446, 3.4).
Bytes vector(const Bytes &octets) {
  const size_t size = octets.size();
  return Bytes{static_cast<uint8_t>(size >> 16), static_cast<uint8_t>(size >> 8),
               static_cast<uint8_t>(size)} +
         octets;
}

/// An entry of a log's answer (RFC 6962, 3.4 and 4.6) for a certificate or, with the digest of its
/// issuer's key, for a precertificate.
std::string entry(const Bytes &certificate, bool is_precertificate) {
  const Bytes start = hex("00 00  00 00 01 8C 00 00 00 00") + Bytes{0, is_precertificate};
  const Bytes chain = vector(vector(hex("30 00")));
  const Bytes leaf = is_precertificate
                         ? start + Bytes(32, 0xAB) + vector(hex("30 00")) + hex("00 00")
                         : start + vector(certificate) + hex("00 00");
  return R"({"leaf_input":")" + base64(leaf) + R"(","extra_data":")" +
         base64(is_precertificate ? vector(certificate) + chain : chain) + "\"}";
}

class Map : public Tool {
 protected:
  Outcome map(std::vector<std::string> words, const std::string &input) const {
    words.insert(words.begin(), "map");
    return run(words, input);
  }

  /// The lines of a run without a mistake.
  std::string lines(const std::vector<std::string> &words, const std::string &input) const {
    const Outcome result = map(words, input);
    EXPECT_EQ(0, result.status) << result.err;
    return result.out;
  }

  const Bytes one_ = certificate(0x010203, "one", {"a.example", "b.example"});
  const Bytes two_ = certificate(0x040506, "two, or more");
};

// ---- Lines --------------------------------------------------------------------------------------

TEST_F(Map, HasFieldsAsColumns) {
  const Outcome result = map({"--fields", "serial,subject,san.dns,notAfter,version,isCA"},
                             base64(one_) + "\n" + base64(two_) + "\n");
  EXPECT_EQ(0, result.status);
  EXPECT_EQ(
      "010203\tCN=one\ta.example,b.example\t2029-12-31T23:59:59Z\t3\tfalse\t\n"
      "040506\tCN=two\\\\, or more\t\t2029-12-31T23:59:59Z\t3\tfalse\t\n",
      result.out);
  EXPECT_TRUE(
      matches(result.err, "^orvelasn1: 2 elements, 0 errors, [0-9.]+ s, [0-9]+ a second\n$"))
      << result.err;
}

TEST_F(Map, HasFieldsAsCsvAndAsJson) {
  const std::string input = base64(one_) + "\n" + base64(two_) + "\n";
  EXPECT_EQ(
      "serial,subject,error\n"
      "010203,CN=one,\n"
      "040506,\"CN=two\\, or more\",\n",
      lines({"--fields", "serial,subject", "--csv", "--header"}, input));
  EXPECT_EQ(
      "{\"san.dns\":[\"a.example\",\"b.example\"],\"version\":3,\"selfIssued\":false,"
      "\"pathLength\":null}\n"
      "{\"san.dns\":[],\"version\":3,\"selfIssued\":false,\"pathLength\":null}\n",
      lines({"--json", "--fields", "san.dns,version,selfIssued,pathLength"}, input));
}

TEST_F(Map, HasOneLineWhateverCharactersAValueHas) {
  const std::string input =
      base64(certificate(0x010203, "a\x1B[31m\tb\nc\"d")) + "\n" + "x,\"y\t" + base64(one_) + "\n";
  EXPECT_EQ(
      "CN=a\\x1B[31m\\x09b\\x0Ac\\\\\"d\t\n"
      "x,\"y\tCN=one\t\n",
      lines({"--fields", "subject"}, input));
  EXPECT_EQ(
      "\"CN=a\\x1B[31m\\x09b\\x0Ac\\\\\"\"d\",\n"
      "\"x,\"\"y\",CN=one,\n",
      lines({"--fields", "subject", "--csv"}, input));
}

/// What a label is shown as.
struct Shown {
  std::string character;
  std::string printable;
};

// A label may have any octets. Those that are not printed as they are stand at each place of a text
// of up to two words of eight.
TEST_F(Map, ShowsEachCharacterAtEachPlace) {
  const std::vector<Shown> all{{"\x1F", "\\x1F"},
                               {std::string(1, '\0'), "\\x00"},
                               {" ", " "},
                               {"~", "~"},
                               {"\x7F", "\\x7F"},
                               {"\\", "\\\\"},
                               {"[", "["},
                               {"]", "]"},
                               {"\xC3\xA9", "\xC3\xA9"},
                               {"\xE2\x80\xAE", "\\u{202E}"},
                               {"\x80", "\\x80"},
                               {"\xFF", "\\xFF"},
                               {"\xC3", "\\xC3"}};
  std::string input;
  std::string expected;
  std::string csv;
  const std::string record = "\t" + base64(one_) + "\n";
  for (const auto &[character, printable] : all)
    for (size_t before = 0; before < 18; ++before)
      for (const size_t after : {0U, 1U, 7U, 8U}) {
        const std::string start(before, 'a');
        const std::string end(after, 'z');
        input += start + character + end + record;
        expected += start + printable + end + "\t\n";
        // A backslash is safe.
        csv += start + (character == "\\" ? character : printable) + end + ",\n";
      }
  EXPECT_EQ(expected, lines({"--in", "base64", "--fields", "id"}, input));
  EXPECT_EQ(csv, lines({"--in", "base64", "--fields", "id", "--csv"}, input));
}

TEST_F(Map, QuotesWhatCsvWantsInQuotes) {
  const std::string end = "\t" + base64(one_) + "\n";
  EXPECT_EQ(
      "a b,\n"
      "\",\",\n"
      "\"\"\"\"\"\",\n"
      "\"a,\\x1B\"\"\",\n",
      lines({"--in", "base64", "--fields", "id", "--csv"},
            "a b" + end + "," + end + "\"\"" + end + "a,\x1B\"" + end));
}

// A record of nearly 64 MiB and many small ones that come with its end.
TEST_F(Map, ReadsALongRecordAndTheSmallOnesAfterIt) {
  const std::string small = base64(one_) + "\n";
  std::string input = std::string((size_t{64} << 20) - 1, 'A') + "\n";
  constexpr size_t count = 2000;
  for (size_t i = 0; i < count; ++i) input += small;
  const std::string out = lines({"--fields", "serial", "--where", "has(serial)"}, input);
  EXPECT_EQ(count * std::string("010203\t\n").size(), out.size());
}

TEST_F(Map, HasTheObjectThatShowHas) {
  const std::string input = pem(one_) + pem(two_);
  EXPECT_EQ(run({"show", "--json"}, input).out, lines({}, input));
  EXPECT_EQ(run({"show", "--json", "--compact"}, input).out, lines({"--compact"}, input));
}

TEST_F(Map, HasTheKeysAndDigestsThatOpensslHas) {
  const std::string rsa = make_certificate({"rsa:2048"});
  // "Modulus=...", and "sha256 Fingerprint=" with colons.
  const std::string modulus = openssl({"x509", "-noout", "-modulus"}, rsa);
  std::string print = openssl({"x509", "-noout", "-fingerprint", "-sha256"}, rsa);
  print.erase(std::remove(print.begin(), print.end(), ':'), print.end());
  const auto value = [](const std::string &line) {
    const size_t start = line.find('=') + 1;
    return line.substr(start, line.find('\n') - start);
  };
  EXPECT_EQ(
      "RSA\t2048\t65537\t" + value(modulus) + "\t\t" + value(print) + "\t\n",
      lines({"--fields", "key.kind,key.bits,key.exponent,key.modulus,key.point,sha256"}, rsa));
  // The key has 33 octets 01, of which the first is the number of unused bits.
  EXPECT_EQ(
      "Ed25519\t\t" + std::string("01010101010101010101010101010101") +
          "01010101010101010101010101010101\t\n",
      lines({"--fields", "key.kind,key.modulus,key.point"}, base64(certificate(0x010203, "x"))));
}

TEST_F(Map, ReadsEveryFormat) {
  const std::string expected = "010203\t\n040506\t\n";
  const auto expect = [&](std::vector<std::string> words, const std::string &input) {
    words.insert(words.end(), {"--fields", "serial"});
    EXPECT_EQ(expected, lines(words, input)) << input.substr(0, 80);
  };
  const std::string first = base64(one_);
  const std::string second = base64(two_);
  expect({}, first + "\n" + second + "\n");
  expect({}, first + "\r\n" + second);
  expect({"--in", "base64"}, first + "\n" + second);
  expect({}, "some words\n" + pem(one_) + "others\n" + pem(two_) + "and an end\n");
  expect({"--in", "pem"}, pem(one_) + pem(two_));
  expect({}, characters(one_ + two_));
  expect({"--in", "der"}, characters(one_ + two_));
  expect({"--in", "csv:2"}, "x," + first + ",\"y\ny\"\n\"a,\"\"b\",\"" + second + "\"\n");
  expect({"--in", "csv:cert"}, "name,cert\nx," + first + "\ny,\"" + pem(two_) + "\"\n");
  expect({"--in", "jsonl:raw"}, R"({"x":{"raw":"y"},"raw":")" + first + "\"}\n" + R"({"raw":")" +
                                    second + R"(","z":[1]})" + "\n");
  const std::string answer = R"({"entries":[)" + entry(one_, false) + ",\n" + entry(two_, true);
  expect({"--in", "ct"}, answer + "]}");
  expect({"--in", "ct"}, R"({ "entries" : [)" + entry(one_, true) + "]}\n" + R"({"entries":[)" +
                             entry(two_, false) + "]}\n");
}

/// A PEM block with lines of this width.
std::string pem(const Bytes &octets, size_t width, const std::string &line_end) {
  std::string out = "-----BEGIN CERTIFICATE-----" + line_end;
  const std::string text = base64(octets);
  for (size_t i = 0; i < text.size(); i += width) out += text.substr(i, width) + line_end;
  return out + "-----END CERTIFICATE-----\n";
}

// Digits are taken eight, four and one at a time. DER does not come by there.
TEST_F(Map, ReadsBase64InLinesOfEveryWidth) {
  Bytes der;
  std::string blocks;
  std::string base64_lines;
  for (const size_t more : {0U, 1U, 2U, 3U, 4U, 5U, 6U, 7U, 40U})
    for (const size_t width :
         {1U, 2U, 3U, 4U, 5U, 7U, 8U, 9U, 11U, 12U, 13U, 61U, 62U, 63U, 64U, 65U, 76U, 9999U})
      for (const char *const line_end : {"\n", "\r\n", "\r", " \t\n\n", "\\n", "\\r\\n", "&#10;"}) {
        const Bytes one = certificate(0x010203, std::string(more, 'x'));
        der = der + one;
        blocks += pem(one, width, line_end);
        base64_lines += base64(one) + "\n";
      }
  const auto with = [&](const std::string &format) {
    return std::vector<std::string>{"--in", format, "--fields", "element,size,sha256,error"};
  };
  const std::string expected = lines(with("der"), characters(der));
  EXPECT_EQ(expected, lines(with("pem"), blocks));
  EXPECT_EQ(expected, lines(with("base64"), base64_lines));
}

TEST_F(Map, SaysWhichCharacterOfABlockIsNoBase64) {
  const std::string sound = pem(one_);
  const size_t start = sound.find('\n') + 1;
  const size_t end = sound.find("-----END") - 1;
  std::string input;
  std::string expected;
  for (const auto &[character, shown] :
       std::vector<Shown>{{"*", "*"}, {"\xFF", "\\\\xFF"}, {std::string(1, '\0'), "\\\\x00"}})
    for (size_t place = start; place < end; ++place) {
      const auto line =
          1 + std::count(sound.begin(), sound.begin() + static_cast<long>(place), '\n');
      if (sound[place] == '\n') continue;
      input += std::string(sound).replace(place, 1, character);
      expected +=
          "line " + std::to_string(line) + ": \"" + shown + "\" is not a base64 character\n";
    }
  EXPECT_EQ(expected, lines({"--in", "pem", "--fields", "error"}, input));
}

TEST_F(Map, SaysThatABlockEndsInsideAGroup) {
  const std::string text = base64(certificate(0x010203, "x"));
  const std::string cut =
      "the base64 text ends inside a group of four; it may have been cut short\n";
  std::string input;
  std::string expected;
  const auto add = [&](size_t digits, const std::string &end, const std::string &error) {
    input += "-----BEGIN CERTIFICATE-----\n" + text.substr(0, digits) + end +
             "\n-----END CERTIFICATE-----\n";
    expected += error;
  };
  for (size_t digits = 0; digits < 24; ++digits) {
    for (size_t padding = 0; padding < 5; ++padding)
      if (padding > 2 || (digits + padding) % 4 != 0) add(digits, std::string(padding, '='), cut);
    add(digits, "=A", "line 2: base64 text after the padding\n");
  }
  add(0, "", "the PEM block is empty\n");
  EXPECT_EQ(expected, lines({"--in", "pem", "--fields", "error"}, input));
}

/// An answer of a log as it stands on the wire: one entry with the certificate and the chain that
/// it was submitted with, and one with what a certificate was made from.
TEST_F(Map, ReadsTheEntriesOfALog) {
  const Bytes issuer = support::text(to_der(make_certificate(ec_key, {"-subj", "/CN=Log CA"})));
  const std::vector<std::string> names{"-subj", "/CN=a.example", "-addext",
                                       "subjectAltName=DNS:a.example,DNS:b.example"};
  const std::string plain = make_certificate(ec_key, names);
  std::vector<std::string> poisoned = names;
  // RFC 6962, 3.1: a critical extension whose value is NULL.
  poisoned.insert(poisoned.end(), {"-addext", "1.3.6.1.4.1.11129.2.4.3=critical,ASN1:NULL"});
  const std::string pre = make_certificate(ec_key, poisoned);
  const auto der = [&](const std::string &pem) { return support::text(to_der(pem)); };
  const auto tbs = [&](const std::string &pem) {
    openssl({"asn1parse", "-strparse", "4", "-noout", "-out", path("tbs")}, pem);
    return support::text(read_file(path("tbs")));
  };
  // RFC 6962, 3.4: version 1, a leaf with an entry, a time, the type of the entry.
  const Bytes x509 = hex("00 00 00 00 01 8C B2 4A 1D 7F 00 00") + vector(der(plain)) + hex("00 00");
  const Bytes precert = hex("00 00 00 00 01 8C B2 4A 1D 80 00 01") + Bytes(32, 0x5A) +
                        vector(tbs(plain)) + hex("00 00");
  // RFC 6962, 4.6: what is beside the leaf.
  const Bytes chain = vector(vector(issuer));
  const Bytes both = vector(der(pre)) + chain;
  const std::string answer = R"({"entries":[{"leaf_input":")" + base64(x509) +
                             R"(","extra_data":")" + base64(chain) + R"("},{"leaf_input":")" +
                             base64(precert) + R"(","extra_data":")" + base64(both) + "\"}]}\n";
  const auto serial = [&](const std::string &pem) {
    std::string line = openssl({"x509", "-noout", "-serial"}, pem);
    return line.substr(line.find('=') + 1, line.find('\n') - line.find('=') - 1);
  };
  const std::string expected =
      serial(plain) + "\ta.example,b.example\t\n" + serial(pre) + "\ta.example,b.example\t\n";
  const std::vector<std::string> words{"--in", "ct", "--fields", "serial,san.dns"};
  EXPECT_EQ(expected, lines(words, answer));
  // Two answers after each other, the second as some logs lay it out.
  std::string wide;
  for (const char c : answer)
    wide += c == ',' || c == '{' || c == '[' ? std::string(1, c) + "\n    " : std::string(1, c);
  EXPECT_EQ(expected + expected, lines(words, answer + wide));
  EXPECT_EQ(serial(pre) + "\t\n", lines({"--in", "ct", "--fields", "serial", "--where",
                                         "extensions = 'precertificatePoison'"},
                                        answer));
}

TEST_F(Map, SaysWhatIsWrongWithAnEntryOfALog) {
  const auto refusal = [&](const std::string &leaf, const std::string &extra) {
    return lines({"--in", "ct", "--fields", "size"},
                 R"({"entries":[{"leaf_input":")" + leaf + R"(","extra_data":")" + extra + "\"}]}");
  };
  const Bytes start = hex("00 00  00 00 01 8C 00 00 00 00");
  const Bytes whole = start + hex("00 00") + vector(one_) + hex("00 00");
  EXPECT_EQ("0\tit is not base64\n", refusal("!", ""));
  EXPECT_EQ("0\tthe leaf is not of RFC 6962\n", refusal("", ""));
  EXPECT_EQ("0\tthe leaf is not of RFC 6962\n", refusal(base64(start + hex("00 02")), ""));
  EXPECT_EQ("0\tthe entry is not of RFC 6962\n", refusal(base64(start + hex("00 00 00 00")), ""));
  EXPECT_EQ("0\tthe entry is not of RFC 6962\n", refusal(base64(start + hex("00 01")), "AAAF"));
  EXPECT_EQ(std::to_string(one_.size()) + "\t\n", refusal(base64(whole), ""));
  EXPECT_EQ("0\tit has no \"leaf_input\" with \"extra_data\"\n",
            lines({"--in", "ct", "--fields", "size"}, R"({"entries":[{"leaf_input":"AAAA"}]})"));
  EXPECT_EQ("0\tit is not JSON\n",
            lines({"--in", "ct", "--fields", "size"}, R"({"entries":[{"leaf_input":"AAAA"]})"));
}

TEST_F(Map, PassesOnWhatStandsBeforeATab) {
  const std::string input = "k1\t" + base64(one_) + "\nk2\tx\t" + base64(two_) + "\nk3\t!\n";
  EXPECT_EQ("k1\t010203\t\nk2\tx\t040506\t\nk3\t\tit is not base64\n",
            lines({"--fields", "serial"}, input));
  EXPECT_EQ(
      "{\"id\":\"k1\",\"serial\":\"010203\"}\n{\"id\":\"k2\\tx\",\"serial\":\"040506\"}\n"
      "{\"id\":\"k3\",\"file\":\"standard input\",\"element\":3,\"error\":\"it is not base64\"}\n",
      lines({"--json", "--fields", "serial"}, input));
}

TEST_F(Map, HasAColumnForLabelsWhereTheFirstLineHasOne) {
  const std::string labelled = "k1\t" + base64(one_) + "\n" + base64(two_) + "\n\t!\n";
  EXPECT_EQ("id\tserial\terror\nk1\t010203\t\n\t040506\t\n\t\tit is not base64\n",
            lines({"--fields", "serial", "--header"}, labelled));
  EXPECT_EQ("id,serial,error\n\"a\"\",b\",010203,\n",
            lines({"--fields", "serial", "--header", "--csv"}, "a\",b\t" + base64(one_)));
  const std::string plain = base64(two_) + "\nk1\t" + base64(one_) + "\n";
  EXPECT_EQ("serial\terror\n040506\t\nk1\t010203\t\n",
            lines({"--fields", "serial", "--header"}, plain));
  EXPECT_EQ("serial\terror\n", lines({"--fields", "serial", "--header"}, ""));
  // Where they are asked for, that is their place.
  EXPECT_EQ("serial\tid\terror\n010203\tk1\t\n040506\t\t\n\t\tit is not base64\n",
            lines({"--fields", "serial,id", "--header"}, labelled));
  EXPECT_EQ("{\"serial\":\"010203\",\"id\":\"k1\"}\n",
            lines({"--fields", "serial,id", "--json"}, labelled.substr(0, labelled.find('\n'))));
}

TEST_F(Map, CountsTheElementsOfEachFile) {
  const std::string a = file("a.b64", base64(one_) + "\n" + base64(two_) + "\n");
  const std::string b = file("b.pem", pem(two_));
  const Outcome result = run({"map", "--fields", "element,serial", a, path("none"), b});
  EXPECT_EQ(1, result.status);
  EXPECT_EQ("1\t010203\t\n2\t040506\t\n1\t040506\t\n", result.out);
  EXPECT_TRUE(
      result.err.starts_with("orvelasn1: " + path("none") + ": No such file or directory\n"))
      << result.err;
}

// ---- What cannot be read ------------------------------------------------------------------------

/// A line of each kind of what is broken, and sound ones between them.
std::string broken_lines(const Bytes &good) {
  Bytes hostile =
      certificate(0x070000, std::string("\0\x1B[31m\t\n\xFF", 9), {std::string("\0\n", 2)});
  Bytes cut(good.begin(), good.end() - 5);
  const std::string sound = base64(good) + "\n";
  return sound + "*no base64*\n" + base64(cut) + "\n" + base64(revocation_list()) + "\n\n" +
         std::string(size_t{10} << 20, 'A') + "\n" + std::string(5, '\0') + "\n" + base64(hostile) +
         "\n" + sound;
}

TEST_F(Map, HasALineForWhatIsBroken) {
  const Outcome result =
      map({"--fields", "subject,type,error"}, broken_lines(certificate(0x010203, "one")));
  EXPECT_EQ(0, result.status);
  std::istringstream text(result.out);
  std::vector<std::string> all;
  for (std::string line; std::getline(text, line);) all.push_back(line);
  ASSERT_EQ(9U, all.size()) << result.out;
  EXPECT_EQ("CN=one\tcertificate\t", all[0]);
  EXPECT_EQ("\t\tit is not base64", all[1]);
  EXPECT_TRUE(all[2].starts_with("\t\t")) << all[2];
  EXPECT_EQ("\tcrl\t", all[3]);
  EXPECT_EQ("\t\texpected base64, found nothing", all[4]);
  EXPECT_TRUE(all[5].starts_with("\t\t")) << all[5];
  EXPECT_EQ("\t\tit is not base64", all[6]);
  EXPECT_TRUE(all[7].ends_with("\tcertificate\t")) << all[7];
  EXPECT_EQ(all[7].npos, all[7].find_first_of(std::string("\0\x1B", 2))) << all[7];
  EXPECT_EQ(all[0], all[8]);
  EXPECT_TRUE(result.err.starts_with("orvelasn1: 9 elements, 5 errors, ")) << result.err;
}

TEST_F(Map, IsTheSameWithAnyNumberOfJobs) {
  std::string input;
  for (uint32_t i = 0; i < 600; ++i)
    input += base64(certificate(0x010000 + i, "subject " + std::to_string(i))) + "\n";
  input += broken_lines(one_);
  const std::string expected = lines({"--jobs", "1"}, input);
  for (const char *jobs : {"2", "3", "8"})
    EXPECT_EQ(expected, lines({"--jobs", jobs}, input)) << jobs;
}

TEST_F(Map, LosesNoElementToOneThatEndsTheProcess) {
  // The text of a name has no room for the identifier octet 84: the decoder ends its process.
  const std::string good = base64(common_name("x")) + "\n";
  const std::string bad = base64(common_name("x", 0x84)) + "\n";
  const std::string ended = "\tthe library ended its process: asn1_x501: [^\n]+\n";
  for (const char *jobs : {"1", "2"}) {
    const std::string out = lines({"--type", "name", "--fields", "size", "--jobs", jobs},
                                  good + bad + bad + good + bad);
    EXPECT_TRUE(matches(out, "^14\t\n0" + ended + "0" + ended + "14\t\n0" + ended + "$")) << out;
  }
}

TEST_F(Map, KeepsTheLabelOfOneThatEndsTheProcess) {
  // What is decoded has a tab, too.
  const std::string bad = base64(common_name("x\ty", 0x84)) + "\n";
  const std::string good = base64(common_name("x\ty")) + "\n";
  const std::string out =
      lines({"--type", "name", "--fields", "size"}, "k1\t" + bad + "k\t2\t" + bad + "k3\t" + good);
  const std::string ended = "\t0\tthe library ended its process: asn1_x501: [^\n]+\n";
  EXPECT_TRUE(matches(out, "^k1" + ended + "k\t2" + ended + "k3\t16\t\n$")) << out;
}

TEST_F(Map, SaysWhatIsTooLong) {
  const std::string sound = base64(one_) + "\n";
  const std::string out =
      lines({"--fields", "serial"}, sound + std::string(size_t{70} << 20, 'A') + "\n" + sound);
  EXPECT_EQ("010203\t\n\tthe record is longer than 64 MiB\n010203\t\n", out);
}

TEST_F(Map, KeepsTheLabelOfWhatIsTooLong) {
  const std::string label(1000, 'k');
  const std::string out =
      lines({"--fields", "serial"},
            label + "\t" + std::string(size_t{70} << 20, 'A') + "\nk2\t" + base64(one_));
  EXPECT_EQ(label + "\t\tthe record is longer than 64 MiB\nk2\t010203\t\n", out);
}

TEST_F(Map, FailsForWhatIsBrokenWhereThatIsAsked) {
  const std::string input = base64(one_) + "\n!\n";
  EXPECT_EQ(0, map({}, input).status);
  EXPECT_EQ(1, map({"--strict"}, input).status);
  EXPECT_EQ(0, map({"--strict"}, base64(one_)).status);
}

TEST_F(Map, IsEmptyForAnEmptyInput) {
  EXPECT_EQ("", lines({}, ""));
  EXPECT_EQ("", lines({"--in", "ct"}, R"({"entries":[]})"));
  EXPECT_EQ("", lines({"--in", "pem"}, "no block\n"));
}

/// What a run writes to standard error where that is a terminal of so many columns.
std::string on_terminal(unsigned short columns,
                        const std::function<void(const std::string &)> &run) {
  const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
  EXPECT_EQ(0, grantpt(terminal));
  EXPECT_EQ(0, unlockpt(terminal));
  const winsize size{24, columns, 0, 0};
  EXPECT_EQ(0, ioctl(terminal, TIOCSWINSZ, &size));
  run(ptsname(terminal));
  std::string text;
  std::array<char, 4096> buffer{};
  for (ssize_t count = 0; (count = read(terminal, buffer.data(), buffer.size())) > 0;)
    text.append(buffer.data(), static_cast<size_t>(count));
  close(terminal);
  return text;
}

TEST_F(Map, ShowsOnATerminalHowFarItIs) {
  const std::string input = file("two.pem", pem(one_) + pem(two_));
  const auto shown = [&](unsigned short columns, const std::string &start) {
    return on_terminal(columns, [&](const std::string &terminal) {
      const Outcome result = run_program(
          {"sh", "-c", start + " '" + ORVELASN1_TOOL_PATH + "' map 2>'" + terminal + "'"}, "", {});
      EXPECT_EQ(0, result.status);
      EXPECT_EQ(2, std::ranges::count(result.out, '\n'));
    });
  };
  const std::string state = "2 elements, 0 errors, [0-9.]+ s, [0-9]+ a second";
  const std::string erased = "\x1B\\[K";
  const std::string end = erased + "\r" + erased + "orvelasn1: " + state + "\r\n$";
  const std::string known = shown(100, "<'" + input + "'");
  EXPECT_TRUE(matches(known, "^\r" + state + "  \\[={20}\\] 100 %, 0 s left" + end)) << known;
  const std::string unknown = shown(100, "cat '" + input + "' |");
  EXPECT_TRUE(matches(unknown, "^\r" + state + end)) << unknown;
  const std::string narrow = shown(20, "<'" + input + "'");
  EXPECT_TRUE(matches(narrow, "^\r2 elements, 0 error" + end)) << narrow;
}

// ---- Conditions ---------------------------------------------------------------------------------

TEST_F(Map, PicksElementsByACondition) {
  const std::string input = base64(one_) + "\n" + base64(two_) + "\n!\n";
  const auto picked = [&](const std::string &condition) {
    std::string out = lines({"--fields", "serial", "--where", condition}, input);
    out.erase(std::remove(out.begin(), out.end(), '\n'), out.end());
    out.erase(std::remove(out.begin(), out.end(), '\t'), out.end());
    return out;
  };
  const std::string refused = "it is not base64";
  EXPECT_EQ("010203", picked("serial = '010203'"));
  EXPECT_EQ("010203", picked("serial == \"010203\""));
  EXPECT_EQ("040506" + refused, picked("serial != '010203'"));
  EXPECT_EQ("040506", picked("serial > '010203'"));
  EXPECT_EQ("010203", picked("san.dns = 'b.example'"));
  EXPECT_EQ("010203", picked("san.dns ~ '^a[.]'"));
  EXPECT_EQ("010203", picked("has(san.dns)"));
  EXPECT_EQ("040506" + refused, picked("not has ( san.dns )"));
  EXPECT_EQ(refused, picked("has(error)"));
  EXPECT_EQ("010203040506", picked("version >= 3 and version <= 3"));
  EXPECT_EQ("", picked("version < 3 or version > 3"));
  EXPECT_EQ("010203040506", picked("version = 3"));
  EXPECT_EQ("010203040506", picked("notAfter < 2029-12-31T23:59:60Z or notAfter < 2030-01-01"));
  EXPECT_EQ("", picked("notAfter < 2029-12-31"));
  EXPECT_EQ("010203040506", picked("notBefore < now and notBefore < now-1d"));
  EXPECT_EQ("040506", picked("not (serial = '010203' or not has(serial))"));
  EXPECT_EQ("010203", picked("serial = '010203' or serial = '040506' and has(san.dns)"));
  EXPECT_EQ("010203040506", picked("isCA = false"));
  EXPECT_EQ("", picked("isCA"));
}

TEST_F(Map, TakesTheMomentFromTheCommandLine) {
  const std::string input = base64(one_) + "\n";
  const auto picked = [&](const std::string &at) {
    return lines({"--fields", "serial", "--where", "notAfter < now+30d", "--at", at}, input);
  };
  EXPECT_EQ("", picked("2029-11-30"));
  EXPECT_EQ("010203\t\n", picked("2029-12-15"));
}

TEST_F(Map, RefusesAWrongConditionBeforeTheFirstLine) {
  const auto refusal = [&](const std::string &condition) {
    const Outcome result = map({"--where", condition}, base64(one_));
    EXPECT_EQ(2, result.status) << condition;
    EXPECT_EQ("", result.out);
    const std::string start = "orvelasn1: --where: ";
    EXPECT_TRUE(result.err.starts_with(start)) << result.err;
    return result.err.substr(start.size(), result.err.find('\n') - start.size());
  };
  EXPECT_EQ("character 2: expected a field", refusal(" "));
  EXPECT_EQ("character 1: no field has the name \"sn.dns\"; did you mean \"san.dns\"?",
            refusal("sn.dns = 'x'"));
  EXPECT_EQ("character 12: expected a number", refusal("key.bits < 'x'"));
  EXPECT_EQ("character 11: expected a text between quotation marks, since subject holds text",
            refusal("subject = x"));
  EXPECT_EQ("character 12: the text has no end", refusal("subject ~  'x"));
  EXPECT_EQ("character 10: key.bits is no text to search in", refusal("key.bits ~ 'x'"));
  EXPECT_EQ("character 9: expected a comparison: subject is no truth", refusal("subject and isCA"));
  EXPECT_EQ("character 6: expected \"and\", \"or\" or the end", refusal("isCA )"));
  EXPECT_EQ("character 11: expected \")\"", refusal("(has(isCA or isCA)"));
  EXPECT_TRUE(refusal("subject ~ '('").starts_with("character 11: no regular expression: "));
  EXPECT_EQ("character 12: expected a date, such as 2030-01-31, 2030-01-31T12:00:00Z or now+30d",
            refusal("notAfter < tomorrow"));
  EXPECT_EQ("character 101: the condition is too deep", refusal(std::string(1000, '(')));
  EXPECT_EQ("character 1: expected a field", refusal(""));
  // Two octets are one character.
  EXPECT_EQ("character 15: expected \"and\", \"or\" or the end",
            refusal("subject = '\xC3\xBC' isCA"));
}

TEST_F(Map, RefusesFieldsAndFormatsThatThereAreNot) {
  const Outcome field = map({"--fields", "serial,subjects"}, "");
  EXPECT_EQ(2, field.status);
  EXPECT_TRUE(field.err.starts_with(
      "orvelasn1: --fields: no field has the name \"subjects\"; did you mean \"subject\"? "))
      << field.err;
  for (const char *format : {"xml", "csv", "csv:0", "jsonl:", "pem:1"})
    EXPECT_EQ(2, map({"--in", format}, "").status) << format;
}

TEST_F(Map, ListsTheFieldsWithTheirKinds) {
  const std::string list = lines({"--list-fields"}, "");
  EXPECT_NE(list.npos, list.find("\nsan.dns         texts   its DNS names\n")) << list;
  EXPECT_NE(list.npos, list.find("\nnotAfter        date    the end of its validity\n")) << list;
  EXPECT_NE(list.npos, list.find("\nkey.bits        number  the size of the key\n")) << list;
  EXPECT_NE(list.npos, list.find("\nisCA            truth   ")) << list;
}

}  // namespace

}  // namespace map_test
