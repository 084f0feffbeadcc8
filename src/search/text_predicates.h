#pragma once

#include <memory>

#include "search/predicate.h"

namespace search {

/// The predicate of a condition on a text.
std::unique_ptr<Predicate> makeTextPredicate(const Index& index, const TextCondition& condition);

}  // namespace search
