#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "search/local_time.h"
#include "search/query.h"

namespace search {

/// What was read of a value: a span, and whether something is still to come ("2019-") or the text
/// makes no sense.
struct SpanValue {
    enum class State {
        Complete,
        Unfinished,  ///< the span is that of the part that is complete, if it has one
        Senseless,
    };
    State state = State::Senseless;
    std::optional<Span> span;
};

/// A size with a unit: "10", "1.5gb"; with > >= < <= = before it, or two with ".." between.
SpanValue readSizeSpan(std::string_view text);
/// The same of whole numbers without units.
SpanValue readNumberSpan(std::string_view text);
/// The same of dates: "2019", "2019-05", "2019-05-31" and "today", "yesterday", "thisweek",
/// "thismonth", "thisyear", "lastweek", "lastmonth", "lastyear", "last90days" (weeks, months,
/// years). Each is a span of whole days.
SpanValue readDateSpan(std::string_view text, LocalTime now);

}  // namespace search
