#include "scan/scandriveapi_support.h"

namespace scan {

std::string_view stripNulls(std::string_view text) { return text.substr(0, text.find('\0')); }

bool isDotName(std::string_view name) { return name == "." || name == ".."; }

void NameList::append(std::string_view name) {
    packed_.append(name);
    packed_.push_back('\0');
}

}  // namespace scan
