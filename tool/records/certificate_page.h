// Certificates as people want to read them: a page and a short form of their own.
#ifndef ORVELASN1_TOOL_RECORDS_CERTIFICATE_PAGE_H
#define ORVELASN1_TOOL_RECORDS_CERTIFICATE_PAGE_H

#include "model/view.h"

namespace tool {

std::string certificate_page(const void *record, const std::string &where, const View &view);
std::string certificate_short_form(const void *record, const View &view);

}  // namespace tool

#endif
