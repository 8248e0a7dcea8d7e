// A fuzz target for the conditions of map: a text is one, or its mistake has a place in it. What is one
// keeps the laws of logic for each of a few objects.
#include "records/condition.h"

#include <array>

#include "text/characters.h"
#include "tool_target.h"

namespace {

using namespace tool;
using fuzz::expect;

/// A certificate (RFC 5280, 4.1) of "one" by "CA", with two DNS names.
constexpr std::string_view certificate_digits =
    "3081A5308197A00302010202030A0B0C300506032B6570300D310B3009060355040A0C024341301E170D323030"
    "3130313030303030305A170D3239313233313233353935395A300E310C300A06035504030C036F6E65302A3005"
    "06032B65700321000101010101010101010101010101010101010101010101010101010101010101A319301730"
    "150603551D11040E300C8202612E8206622E74657374300506032B657003020001";

struct Objects {
  Objects() {
    refused.number = 1;
    refused.file = "a.pem";
    refused.id = "x";
    refused.fault = &fault;
    sound.number = 2;
    sound.octets = octets;
    sound.type = type_named("certificate");
    sound.record = sound.certificate = record.get();
  }
  Bytes octets = *from_hex(certificate_digits);
  Owned<Certificate> record = decoded(pki_Certificate_d, pki_Certificate_free, octets);
  Fault fault{3, "it is not base64"};
  Object refused;
  Object sound;
};

Condition condition(const std::string &text) {
  auto parsed = Condition::parse(text, 0);
  expect(parsed.index() == 0, "what is made of conditions is one");
  return std::get<Condition>(std::move(parsed));
}

}  // namespace

void fuzz::hold(Octets input) {
  static const Objects objects;
  expect(objects.record != nullptr, "the certificate of the target is one");
  // No argument of a program has a NUL. The library of regular expressions takes the more memory the
  // larger a number of repetitions is, and may take forever for what refers back.
  std::string text(text_of(input));
  std::erase(text, '\0');
  if (text.find('~') != text.npos)
    std::erase_if(text, [](char c) { return c == '{' || c == '\\'; });
  const auto parsed = Condition::parse(text, 0);
  const auto later = Condition::parse(text, Seconds{4102444800});
  expect(parsed.index() == later.index(), "the moment makes no text a condition");
  if (const auto *const mistake = std::get_if<Condition::Mistake>(&parsed)) {
    expect(mistake->place >= 1 && mistake->place <= text.size() + 1, "a mistake has a place");
    expect(!mistake->text.empty(), "a mistake has a text");
    expect_printable(mistake->text + "\n");
    return;
  }
  const auto &plain = std::get<Condition>(parsed);
  const Condition contrary = condition("not (" + text + ")");
  const Condition all = condition("(" + text + ") and not (" + text + ")");
  const Condition any = condition("(" + text + ") or not (" + text + ")");
  for (const Object *const object : {&objects.refused, &objects.sound}) {
    const bool holds = plain(*object);
    expect(contrary(*object) != holds, "\"not\" is the contrary");
    expect(!all(*object), "nothing is so and not so");
    expect(any(*object), "everything is so or not so");
  }
}
