#include "platform/posix/type_names.h"

#include <QFile>
#include <QLocale>
#include <QMimeDatabase>
#include <QMimeType>
#include <QStandardPaths>
#include <QString>
#include <algorithm>
#include <array>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "base/text.h"
#include "platform/type_name_rules.h"

namespace platform::posix {

namespace {

/// Lets std::string keys be looked up by views.
struct TextHash {
    using is_transparent = void;  // NOLINT(readability-identifier-naming)
    std::size_t operator()(std::string_view text) const {
        return std::hash<std::string_view>()(text);
    }
};
template <typename Value>
using TextMap = std::unordered_map<std::string, Value, TextHash, std::equal_to<>>;
using TextSet = std::unordered_set<std::string, TextHash, std::equal_to<>>;

char lowerAscii(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter | 0x20) : letter;
}

std::string lowerAscii(std::string_view text) {
    std::string lower(text);
    for (char& letter : lower) {
        letter = lowerAscii(letter);
    }
    return lower;
}

/// Makes English the language of Qt's texts for as long as it lives.
class EnglishTexts {
  public:
    EnglishTexts() { QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates)); }
    ~EnglishTexts() { QLocale::setDefault(before_); }
    EnglishTexts(const EnglishTexts&) = delete;
    EnglishTexts& operator=(const EnglishTexts&) = delete;

  private:
    QLocale before_;
};

constexpr std::string_view wildcards = "*?[";

bool equalsLower(std::string_view name, std::string_view lower) {
    return std::equal(name.begin(), name.end(), lower.begin(), lower.end(),
                      [](char left, char right) { return lowerAscii(left) == right; });
}

bool beginsLower(std::string_view name, std::string_view lower) {
    return name.size() >= lower.size() && equalsLower(name.substr(0, lower.size()), lower);
}

bool endsLower(std::string_view name, std::string_view lower) {
    return name.size() >= lower.size() &&
           equalsLower(name.substr(name.size() - lower.size()), lower);
}

std::size_t slotOf(char letter) { return static_cast<unsigned char>(lowerAscii(letter)); }

/// The patterns of the database, in so far as they tell what of a name decides its type. They err
/// on the side of taking too many names in; the database itself has the last word on those.
class NamePatterns {
  public:
    void add(std::string_view pattern);

    /// True when a pattern for whole names may match.
    bool mayTakeName(std::string_view name) const;
    /// The end of a name, from a "." on, that decides its type where no pattern for whole names
    /// does; empty where no pattern of extensions matches.
    std::string_view decidingEnd(std::string_view name) const;

  private:
    /// What a pattern with wildcards begins and ends with.
    struct Ends {
        std::string front;
        std::string back;
    };
    /// A pattern of an extension with wildcards in it.
    struct VagueExtension {
        std::string front;
        std::size_t length = 0;  ///< of the whole extension; 0 where it may be any
    };

    void addExtension(std::string_view extension);
    void addCompound(std::string_view end);
    void addNamePattern(std::string_view pattern);
    bool isKnownExtension(std::string_view extension) const;
    bool isVagueExtension(std::string_view extension) const;
    std::string_view compoundEnd(std::string_view name, std::string_view extension) const;

    TextSet wholeNames_;  ///< lower case, no wildcards
    std::size_t longestWholeName_ = 0;
    std::array<std::vector<Ends>, 256> byFirst_;  ///< by the first letter of `front`
    std::array<std::vector<Ends>, 256> byLast_;   ///< by the last letter of `back`, no front
    bool takesAnyName_ = false;                   ///< there is a pattern with neither

    TextSet extensions_;  ///< "pdf" of "*.pdf"
    std::size_t longestExtension_ = 0;
    std::vector<VagueExtension> vagueExtensions_;  ///< of "*.[1-9]"
    TextMap<std::vector<std::string>> compounds_;  ///< ".tar.gz" of "*.tar.gz", by "gz"
    std::vector<std::string> insides_;             ///< ".so." of "*.so.[0-9]*"
};

void NamePatterns::add(std::string_view pattern) {
    const std::string lower = lowerAscii(pattern);
    if (lower.find_first_of(wildcards) == std::string::npos) {
        wholeNames_.insert(lower);
        longestWholeName_ = std::max(longestWholeName_, lower.size());
    } else if (!lower.starts_with("*.")) {
        addNamePattern(lower);
    } else if (lower.rfind('.') == 1) {
        addExtension(std::string_view(lower).substr(2));
    } else {
        addCompound(std::string_view(lower).substr(1));
    }
}

void NamePatterns::addExtension(std::string_view extension) {
    const std::size_t wildcard = extension.find_first_of(wildcards);
    if (wildcard == std::string_view::npos) {
        extensions_.emplace(extension);
        longestExtension_ = std::max(longestExtension_, extension.size());
        return;
    }
    const std::size_t close = extension.rfind(']');
    const bool oneClass =
        extension[wildcard] == '[' && close != std::string_view::npos &&
        extension.find_first_of(wildcards, wildcard + 1) == std::string_view::npos;
    const std::size_t length = oneClass ? extension.size() - (close - wildcard) : 0;
    vagueExtensions_.push_back({std::string(extension.substr(0, wildcard)), length});
}

void NamePatterns::addCompound(std::string_view end) {
    const std::size_t wildcard = end.find_first_of(wildcards);
    if (wildcard != std::string_view::npos) {
        insides_.emplace_back(end.substr(0, wildcard));
        return;
    }
    const std::string_view last = end.substr(end.rfind('.') + 1);
    compounds_[std::string(last)].emplace_back(end);
    addExtension(last);
}

void NamePatterns::addNamePattern(std::string_view pattern) {
    const std::size_t last = pattern.find_last_of("*?]");
    Ends ends{std::string(pattern.substr(0, pattern.find_first_of(wildcards))),
              std::string(pattern.substr(last + 1))};
    if (!ends.front.empty()) {
        byFirst_[slotOf(ends.front.front())].push_back(std::move(ends));
    } else if (!ends.back.empty()) {
        byLast_[slotOf(ends.back.back())].push_back(std::move(ends));
    } else {
        takesAnyName_ = true;
    }
}

bool NamePatterns::mayTakeName(std::string_view name) const {
    const auto fits = [&](const Ends& ends) {
        return beginsLower(name, ends.front) && endsLower(name, ends.back);
    };
    if (name.empty()) {
        return false;
    }
    const bool onlyExtension = name.rfind('.') == 0;
    return takesAnyName_ || (onlyExtension && isVagueExtension(name.substr(1))) ||
           std::ranges::any_of(byFirst_[slotOf(name.front())], fits) ||
           std::ranges::any_of(byLast_[slotOf(name.back())], fits) ||
           (name.size() <= longestWholeName_ && wholeNames_.contains(lowerAscii(name)));
}

std::string_view NamePatterns::decidingEnd(std::string_view name) const {
    for (const std::string& inside : insides_) {
        for (std::size_t dot = name.find('.', 1); dot != std::string_view::npos;
             dot = name.find('.', dot + 1)) {
            if (beginsLower(name.substr(dot), inside)) {
                return name.substr(dot);
            }
        }
    }
    const std::size_t dot = name.rfind('.');
    // To the database a name of nothing but an extension has none, unless a wildcard takes it in,
    // and then it is a name of its own.
    if (dot == std::string_view::npos || dot == 0 || !isKnownExtension(name.substr(dot + 1))) {
        return {};
    }
    const std::string_view compound = compoundEnd(name, name.substr(dot + 1));
    return compound.empty() ? name.substr(dot) : compound;
}

bool NamePatterns::isKnownExtension(std::string_view extension) const {
    return (extension.size() <= longestExtension_ && extensions_.contains(lowerAscii(extension))) ||
           isVagueExtension(extension);
}

bool NamePatterns::isVagueExtension(std::string_view extension) const {
    return std::ranges::any_of(vagueExtensions_, [&](const VagueExtension& vague) {
        return beginsLower(extension, vague.front) &&
               (vague.length == 0 || vague.length == extension.size());
    });
}

std::string_view NamePatterns::compoundEnd(std::string_view name,
                                           std::string_view extension) const {
    std::size_t longest = 0;
    const auto ends = compounds_.find(lowerAscii(extension));
    if (ends != compounds_.end()) {
        for (const std::string& end : ends->second) {
            if (end.size() < name.size() && endsLower(name, end)) {
                longest = std::max(longest, end.size());
            }
        }
    }
    return name.substr(name.size() - longest);
}

}  // namespace

class TypeNames::Database {
  public:
    Database() { readPatterns(); }

    std::string_view ofFile(std::string_view name);

  private:
    using Answers = TextMap<std::string>;

    /// More answers of a kind than this are forgotten together; hardly a tree needs as many.
    static constexpr std::size_t mostRemembered = 8192;

    void readPatterns();
    void readPatternFile(const QString& path);
    std::string asked(std::string_view name) const;
    std::string_view remembered(Answers& answers, std::string_view key, std::string_view name);

    QMimeDatabase database_;
    NamePatterns patterns_;
    Answers ends_;   ///< by the deciding ends of names
    Answers names_;  ///< by whole names
    std::string unknown_;
};

void TypeNames::Database::readPatterns() {
    const QStringList files = QStandardPaths::locateAll(QStandardPaths::GenericDataLocation,
                                                        QStringLiteral("mime/globs2"));
    for (const QString& path : files) {
        readPatternFile(path);
    }
    if (!files.isEmpty()) {
        return;
    }
    // Qt brings a database of its own where the system has none; walking its types takes longer.
    for (const QMimeType& type : database_.allMimeTypes()) {
        for (const QString& pattern : type.globPatterns()) {
            patterns_.add(pattern.toStdString());
        }
    }
}

/// Lines of the form "weight:type:pattern" or "weight:type:pattern:flags".
void TypeNames::Database::readPatternFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return;
    }
    for (const QByteArray& line : file.readAll().split('\n')) {
        const QList<QByteArray> fields = line.split(':');
        if (!line.startsWith('#') && fields.size() >= 3) {
            patterns_.add(fields[2].toStdString());
        }
    }
}

/// The answer of the database itself.
std::string TypeNames::Database::asked(std::string_view name) const {
    const EnglishTexts english;
    const QMimeType type = database_.mimeTypeForFile(
        QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())),
        QMimeDatabase::MatchExtension);
    // The default type says no more than that nothing is known; the extension says more.
    if (!type.isValid() || type.isDefault()) {
        return {};
    }
    const std::string comment = type.comment().toStdString();
    return std::string(base::firstUtf16Units(comment, longestTypeName));
}

/// The answer for `name`, which is that for all names with this key.
std::string_view TypeNames::Database::remembered(Answers& answers, std::string_view key,
                                                 std::string_view name) {
    const auto found = answers.find(key);
    if (found != answers.end()) {
        return found->second;
    }
    if (answers.size() >= mostRemembered) {
        answers.clear();
    }
    return answers.emplace(key, asked(name)).first->second;
}

std::string_view TypeNames::Database::ofFile(std::string_view name) {
    std::string_view text;
    if (patterns_.mayTakeName(name)) {
        text = remembered(names_, name, name);
    } else if (const std::string_view end = patterns_.decidingEnd(name); !end.empty()) {
        text = remembered(ends_, end, name);
    }
    if (!text.empty()) {
        return text;
    }
    unknown_ = extensionTypeName(name);
    return unknown_;
}

TypeNames::TypeNames() : database_(std::make_unique<Database>()) {}

TypeNames::~TypeNames() = default;

std::string_view TypeNames::ofFile(std::string_view name) { return database_->ofFile(name); }

}  // namespace platform::posix
