#pragma once

#include <string>

#include "platform/file_time.h"

namespace scan {

/// Sets `text`, whose memory is reused, to the one form in which the program keeps dates:
/// "mm/dd/yyyy hh:nn:ss", 24 hours, for example "03/07/2001 09:05:00".
void setDateText(std::string& text, const platform::SystemTime& time);
std::string dateText(const platform::SystemTime& time);

}  // namespace scan
