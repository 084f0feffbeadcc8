#include "keywords/collection_failures.h"

#include <limits>
#include <string>

namespace keywords {

namespace {

constexpr std::int16_t mostNotes = std::numeric_limits<std::int16_t>::max();

}  // namespace

TooManyNotesFailure::TooManyNotesFailure(std::int64_t notes)
    : OverflowFailure(std::to_string(notes) + " notes are more than the " +
                      std::to_string(mostNotes) + " that can be known at a time") {}

base::Int16 countOfNotes(std::int64_t notes) {
    if (notes > mostNotes) {
        throw TooManyNotesFailure(notes);
    }
    return notes;
}

}  // namespace keywords
