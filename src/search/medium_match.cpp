#include "search/medium_match.h"

#include "search/text_fold.h"

namespace search {
namespace {

/// Marks the media for which `test` is true; false when there is none.
template <typename Test>
bool mark(const Index& index, std::vector<bool>& chosen, Test test) {
    bool any = false;
    for (std::size_t i = 0; i < chosen.size(); ++i) {
        if (test(index.media()[i])) {
            chosen[i] = true;
            any = true;
        }
    }
    return any;
}

void markNamed(const Index& index, const MediumName& name, std::vector<bool>& chosen) {
    if (name.ids && mark(index, chosen, [&](const base::MediaInfo& medium) {
            return name.ids->contains(medium.mediaId);
        })) {
        return;
    }
    const bool isWhole = mark(index, chosen, [&](const base::MediaInfo& medium) {
        return foldedText(medium.mediaName) == name.text ||
               foldedText(medium.mediaLabel) == name.text;
    });
    if (!isWhole) {
        mark(index, chosen, [&](const base::MediaInfo& medium) {
            return foldedText(medium.mediaName).find(name.text) != std::string::npos ||
                   foldedText(medium.mediaLabel).find(name.text) != std::string::npos;
        });
    }
}

}  // namespace

std::vector<bool> mediaNamed(const Index& index, const std::vector<MediumName>& names) {
    std::vector<bool> chosen(index.media().size());
    for (const MediumName& name : names) {
        markNamed(index, name, chosen);
    }
    return chosen;
}

}  // namespace search
