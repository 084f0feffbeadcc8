#pragma once

#include <cstdint>

#include "base/checked.h"
#include "base/failure.h"

// The failures of the known lists that a user can bring about, told apart from others of their
// kind so that they can be explained.

namespace keywords {

/// A list of known texts could not be made, as no record of the archive has a text for it.
class NothingCollectedFailure : public base::SubscriptFailure {
  public:
    using SubscriptFailure::SubscriptFailure;
};

/// A text cannot be made known, as the archive's texts are counted but could not be collected.
class NothingToAddToFailure : public base::SubscriptFailure {
  public:
    using SubscriptFailure::SubscriptFailure;
};

/// There are more notes than noteCount can count.
class TooManyNotesFailure : public base::OverflowFailure {
  public:
    explicit TooManyNotesFailure(std::int64_t notes);
};

/// The number as noteCount holds it; TooManyNotesFailure beyond 32,767.
base::Int16 countOfNotes(std::int64_t notes);

}  // namespace keywords
