#pragma once

#include <string>
#include <vector>

#include "archive/annotations.h"
#include "searchcontrol/chosen_entries.h"

namespace searchcontrol {

/// What is to become of one of the three texts of each chosen entry.
struct TextWish {
    enum class Kind {
        Keep,
        Set,  ///< to the text, also to an empty one
        Add,  ///< the text behind what is there: keywords behind a comma, notes behind a blank
    };
    Kind kind = Kind::Keep;
    std::string text;
};

struct AnnotationWish {
    TextWish keywords;
    TextWish notes1;
    TextWish notes2;
};

/// What an entry holds now.
archive::Annotation annotationOf(const search::Index& index, search::Row row);
/// What it is to hold. Keywords that are there already are not added again.
archive::Annotation wishedFor(const archive::Annotation& now, const AnnotationWish& wish);
/// The changes that make the wish true; entries that are as wished already need none.
std::vector<archive::AnnotationChange> changesFor(const ChosenEntries& chosen,
                                                  const AnnotationWish& wish);

}  // namespace searchcontrol
