#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace shell {

/// The help text: pages in Markdown, each of which begins with a line "# Title". A page refers to
/// another one by "#" and its anchor.
class HelpBook {
  public:
    struct Page {
        std::string title;
        std::string anchor;  ///< the title in small letters with "-" for each run of other signs
        std::string text;    ///< Markdown, the title's line included
    };

    /// Takes a help file apart; what stands before the first title is left out. base::FileFailure
    /// when the text is not UTF-8 or has no page.
    static HelpBook parse(std::string_view fileText);

    const std::vector<Page>& pages() const { return pages_; }
    std::optional<std::size_t> pageOf(std::string_view anchor) const;
    /// The pages that hold every word of `words`, case ignored; those with all of them in the title
    /// come first. All pages where there is no word.
    std::vector<std::size_t> search(std::string_view words) const;

  private:
    std::vector<Page> pages_;
};

}  // namespace shell
