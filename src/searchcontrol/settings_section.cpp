#include "searchcontrol/settings_section.h"

#include <utility>

#include "platform/private_profile.h"
#include "settings/ini.h"

namespace searchcontrol {

namespace {

/// Room for any query that a person types.
constexpr std::size_t bufferSize = 1 << 16;

}  // namespace

SettingsSection::SettingsSection(platform::PrivateProfile& profile, platform::ShellServices& shell,
                                 std::string section)
    : profile_(profile), shell_(shell), section_(std::move(section)) {}

QString SettingsSection::read(const std::string& key) const {
    return QString::fromStdString(
        profile_.getString(section_, key, "", bufferSize, settings::settingsPath(shell_)));
}

int SettingsSection::readNumber(const std::string& key) const { return read(key).toInt(); }

/// A value is one line of the file.
void SettingsSection::write(const std::string& key, const QString& text) {
    QString line = text;
    line.replace(QChar('\n'), QChar(' ')).replace(QChar('\r'), QChar(' '));
    profile_.writeString(section_, key, line.toStdString(), settings::settingsPath(shell_));
}

void SettingsSection::writeNumber(const std::string& key, int number) {
    write(key, QString::number(number));
}

}  // namespace searchcontrol
