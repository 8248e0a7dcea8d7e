#include "forms.h"

namespace attack {

using support::hex;

std::vector<Form> rfc7633_forms() {
  return {{"pki_Features", {hex("30 03 02 01 05"), hex("30 06 02 01 05 02 01 11"), hex("30 00")}}};
}

}  // namespace attack
