#pragma once

#include <QString>
#include <string>

namespace platform {
class PrivateProfile;
class ShellServices;
}  // namespace platform

namespace searchcontrol {

/// One section of the program's settings file. A text that cannot be written is passed over, as
/// everywhere in the settings.
class SettingsSection {
  public:
    /// Both must outlive this.
    SettingsSection(platform::PrivateProfile& profile, platform::ShellServices& shell,
                    std::string section);

    /// The text of a key; "" where there is none.
    QString read(const std::string& key) const;
    int readNumber(const std::string& key) const;
    void write(const std::string& key, const QString& text);
    void writeNumber(const std::string& key, int number);

  private:
    platform::PrivateProfile& profile_;
    platform::ShellServices& shell_;
    std::string section_;
};

}  // namespace searchcontrol
