#include "cli/listing_watch.h"

#include "platform/path_rules.h"

namespace cli {

std::unique_ptr<platform::Listing> ListingWatch::findFirst(std::string_view pattern) {
    const std::string_view folder = platform::splitPath(pattern).folder;
    if (folder_ != folder) {
        folder_ = folder;
        wasRefused_ = false;
        observer_.folderEntered(folder_);
    }
    auto listing = lister_.findFirst(pattern);
    if (listing == nullptr && !wasRefused_) {
        wasRefused_ = true;
        const std::string reason = lister_.whyNotListed();
        // Without a reason it is as it should be: another file system begins there.
        if (!reason.empty()) {
            observer_.folderRefused(folder_, reason);
        }
    }
    return listing;
}

}  // namespace cli
