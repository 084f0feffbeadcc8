#include "keywords/distinct_texts.h"

namespace keywords {

void DistinctTexts::append(std::string_view text) {
    ++appended_;
    if (!known_.contains(text)) {
        known_.insert(texts_.emplace_back(text));
    }
}

}  // namespace keywords
