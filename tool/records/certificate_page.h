// The page and the short form of a certificate, which are not made from its description.
#ifndef ORVELASN1_TOOL_RECORDS_CERTIFICATE_PAGE_H
#define ORVELASN1_TOOL_RECORDS_CERTIFICATE_PAGE_H

#include "model/brief.h"

namespace tool {

std::string certificate_page(const void *record, const std::string &where, const View &view);
Brief certificate_short_form(const void *record, const View &view);

}  // namespace tool

#endif
