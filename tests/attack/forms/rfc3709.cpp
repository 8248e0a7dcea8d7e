#include "forms.h"

namespace attack {

namespace {

using support::element;
using support::hex;
using support::text;
using support::operator+;

Bytes sequence(const Bytes &content) { return element(0x30, content); }

const Bytes hash = sequence(sequence(hex("06 05 2B 0E 03 02 1A 05 00")) + hex("04 02 12 34"));
const Bytes place = element(22, text("http://example.org/logo.gif"));
const Bytes details =
    sequence(element(22, text("image/gif")) + sequence(hash) + sequence(place + place));
const Bytes reference = sequence(sequence(hash + hash) + sequence(place));

const Bytes sizes = hex("02 01 10 02 01 20 02 01 40");
const Bytes whole_info = sequence(hex("80 01 00") + sizes + hex("82 02 01 00 84 02 65 6E"));
const Bytes bits_info = sequence(sizes + hex("81 01 08"));
const Bytes language_info = sequence(hex("80 01 01") + sizes + hex("84 02 64 65"));
const Bytes image = sequence(details + whole_info);
const Bytes plain_image = sequence(details);

const Bytes whole_sound = sequence(sizes + hex("83 02 3E 80 84 02 65 6E"));
const Bytes plain_sound = sequence(sizes);
const Bytes audio = sequence(details + whole_sound);
const Bytes plain_audio = sequence(details);

const Bytes data = sequence(image + plain_image) + element(0xA1, audio + plain_audio);
const Bytes direct = element(0xA0, data);
const Bytes indirect = element(0xA1, sequence(hash) + sequence(place));
const Bytes other = sequence(hex("06 08 2B 06 01 05 05 07 14 01") + direct);

}  // namespace

std::vector<Form> rfc3709_forms() {
  return {
      {"pki_HashAlgAndValue", {hash}},
      {"pki_LogotypeDetails", {details}},
      {"pki_LogotypeReference", {reference}},
      {"pki_LogotypeImageResolution", {hex("81 01 08"), hex("82 02 01 00")}},
      {"pki_LogotypeImageInfo", {whole_info, bits_info, language_info, sequence(sizes)}},
      {"pki_LogotypeImage", {image, plain_image}},
      {"pki_LogotypeAudioInfo", {whole_sound, plain_sound}},
      {"pki_LogotypeAudio", {audio, plain_audio}},
      {"pki_LogotypeData", {sequence(data), sequence(element(0xA1, audio)), sequence({})}},
      {"pki_LogotypeInfo", {direct, indirect}},
      {"pki_OtherLogotypeInfo", {other}},
      {"pki_LogotypeExtn",
       {sequence(element(0xA0, sequence(direct + indirect)) + element(0xA1, direct) +
                 element(0xA2, indirect) + element(0xA3, sequence(other))),
        sequence(element(0xA2, direct)), sequence({})}},
  };
}

}  // namespace attack
