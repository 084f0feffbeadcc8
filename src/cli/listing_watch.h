#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "platform/directory_lister.h"

namespace cli {

/// What a ListingWatch tells of.
class ListingObserver {
  public:
    virtual ~ListingObserver() = default;
    /// A folder ("d:\dir\") is about to be listed. May throw to end the walk.
    virtual void folderEntered(const std::string& folder) = 0;
    /// A folder could not be listed, so nothing of what is in it will be found.
    virtual void folderRefused(const std::string& folder, const std::string& reason) = 0;
};

/// A lister that tells which folders a walk comes to and which of them cannot be listed: a walk
/// itself passes over those in silence. All questions go on to another lister. Each folder is told
/// once, although a walk lists it twice.
class ListingWatch : public platform::DirectoryLister {
  public:
    /// Both must outlive this.
    ListingWatch(platform::DirectoryLister& lister, ListingObserver& observer)
        : lister_(lister), observer_(observer) {}

    std::unique_ptr<platform::Listing> findFirst(std::string_view pattern) override;
    std::string whyNotListed() const override { return lister_.whyNotListed(); }
    std::uint32_t attributes(std::string_view path) override { return lister_.attributes(path); }
    std::string typeName(std::string_view path) override { return lister_.typeName(path); }
    platform::FileTime fileTimeToLocalFileTime(platform::FileTime time) override {
        return lister_.fileTimeToLocalFileTime(time);
    }

  private:
    platform::DirectoryLister& lister_;
    ListingObserver& observer_;
    std::string folder_;  ///< the one listed last
    bool wasRefused_ = false;
};

}  // namespace cli
