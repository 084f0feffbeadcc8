#pragma once

#include <map>
#include <string>

namespace platform {

class PrivateProfile;

/// Folders that were made drives: by section "drives" of the settings file (key = letter, value =
/// folder) or for this run.
class FolderDrives {
  public:
    /// `profile` outlives this object; the settings file need not exist.
    FolderDrives(PrivateProfile& profile, std::string settingsFilePath);

    /// Folders by lower-case letters. The settings file is read anew each time; it does not meet
    /// letters that were given out in this run.
    std::map<char, std::string> read() const;
    void addForThisRun(char letter, const std::string& folder);

  private:
    PrivateProfile& profile_;
    std::string settingsFilePath_;
    std::map<char, std::string> madeForThisRun_;
};

}  // namespace platform
