#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/directory_lister.h"
#include "platform/windows/type_names.h"
#include "platform/windows/windows_api.h"

namespace platform::windows {

/// Reads folders by the system's find calls, in its order.
///
/// Paths go to the system in the form that is taken as it stands, so that there is no limit of 260
/// characters and a name like "aux" or "name." is found. A symbolic link or a junction is a file
/// and not entered; a folder on which another volume is mounted is a folder and not entered. A name
/// with a lone surrogate is shown with U+FFFD in its place; the lister knows its native form as
/// long as it lives.
class WindowsDirectoryLister : public DirectoryLister {
  public:
    /// Tells where the root of a drive lies; none for an unknown letter.
    using RootOf = std::function<std::optional<std::string>(char letter)>;

    explicit WindowsDirectoryLister(RootOf rootOf) : rootOf_(std::move(rootOf)) {}

    std::unique_ptr<Listing> findFirst(std::string_view pattern) override;
    std::string whyNotListed() const override;
    std::uint32_t attributes(std::string_view path) override;
    std::string typeName(std::string_view path) override;
    FileTime fileTimeToLocalFileTime(FileTime time) override;

  private:
    class FindListing;

    /// What the listing last gave out, which the walk asks about next.
    struct Delivered {
        std::string path;
        DWORD attributes = 0;
    };

    std::optional<std::wstring> rootFolderOf(std::string_view path);
    /// The full native path, not yet in its verbatim form; empty for an unknown drive.
    std::wstring nativeFolderOf(std::string_view folder);
    std::wstring nativePathOf(std::string_view path);
    DWORD askedAttributes(std::string_view path);
    std::unique_ptr<Listing> refuse(DWORD reason);

    RootOf rootOf_;
    std::map<char, std::wstring> roots_;
    std::map<std::string, std::wstring, std::less<>> oddNames_;  ///< by the paths they are shown as
    std::string folder_;  ///< the folder last asked about, and its native path
    std::wstring nativeFolder_;
    Delivered delivered_;
    TypeNames typeNames_;
    DWORD refusal_ = ERROR_SUCCESS;  ///< why the last listing was refused
};

}  // namespace platform::windows
