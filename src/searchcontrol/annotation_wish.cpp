#include "searchcontrol/annotation_wish.h"

#include <string_view>

#include "base/text.h"

namespace searchcontrol {

namespace {

std::string_view trimmed(std::string_view text) {
    const std::size_t start = text.find_first_not_of(' ');
    const std::size_t last = text.find_last_not_of(' ');
    return start == std::string_view::npos ? std::string_view()
                                           : text.substr(start, last - start + 1);
}

template <typename Use>
void forEachKeyword(std::string_view keywords, Use use) {
    for (std::size_t start = 0; start <= keywords.size();) {
        const std::size_t comma = std::min(keywords.find(',', start), keywords.size());
        const std::string_view keyword = trimmed(keywords.substr(start, comma - start));
        if (!keyword.empty()) {
            use(keyword);
        }
        start = comma + 1;
    }
}

bool holdsKeyword(std::string_view keywords, std::string_view wanted) {
    bool isThere = false;
    forEachKeyword(keywords, [&](std::string_view keyword) {
        isThere = isThere || base::equalIgnoringCase(keyword, wanted);
    });
    return isThere;
}

std::string withKeywords(std::string keywords, std::string_view added) {
    forEachKeyword(added, [&](std::string_view keyword) {
        if (!holdsKeyword(keywords, keyword)) {
            keywords += keywords.empty() ? "" : ",";
            keywords += keyword;
        }
    });
    return keywords;
}

std::string withNote(const std::string& note, const std::string& added) {
    return note.empty() || added.empty() ? note + added : note + " " + added;
}

template <typename Add>
std::string wishedText(const std::string& now, const TextWish& wish, Add add) {
    switch (wish.kind) {
        case TextWish::Kind::Set:
            return wish.text;
        case TextWish::Kind::Add:
            return add(now, wish.text);
        case TextWish::Kind::Keep:
            break;
    }
    return now;
}

}  // namespace

archive::Annotation annotationOf(const search::Index& index, search::Row row) {
    return {std::string(index.keywords(row)), std::string(index.notes1(row)),
            std::string(index.notes2(row))};
}

archive::Annotation wishedFor(const archive::Annotation& now, const AnnotationWish& wish) {
    return {wishedText(now.keywords, wish.keywords, withKeywords),
            wishedText(now.notes1, wish.notes1, withNote),
            wishedText(now.notes2, wish.notes2, withNote)};
}

std::vector<archive::AnnotationChange> changesFor(const ChosenEntries& chosen,
                                                  const AnnotationWish& wish) {
    std::vector<archive::AnnotationChange> changes;
    for (const search::Row row : chosen.rows) {
        const archive::Annotation now = annotationOf(*chosen.index, row);
        archive::Annotation wished = wishedFor(now, wish);
        if (wished != now) {
            changes.push_back(
                {chosen.index->place(row), chosen.index->entry(row), std::move(wished)});
        }
    }
    return changes;
}

}  // namespace searchcontrol
