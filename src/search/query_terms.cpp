#include "search/query_terms.h"

#include <algorithm>
#include <array>
#include <utility>

#include "search/query_fields.h"
#include "search/query_values.h"
#include "search/text_fold.h"
#include "search/text_test.h"

namespace search {
namespace {

struct TextField {
    std::string_view name;
    TextTarget target;
};
constexpr std::array<TextField, 6> textFields{{{"dir", TextTarget::Folder},
                                               {"kw", TextTarget::Keywords},
                                               {"keyword", TextTarget::Keywords},
                                               {"keywords", TextTarget::Keywords},
                                               {"note", TextTarget::Notes},
                                               {"notes", TextTarget::Notes}}};

struct NumberField {
    std::string_view name;
    Measure measure;
    std::string_view what;
    std::string_view example;
};
constexpr std::array<NumberField, 7> numberFields{
    {{"size", Measure::Size, "a size", "size:>10mb"},
     {"date", Measure::Modified, "a date", "date:2019-05"},
     {"created", Measure::Created, "a date", "created:2019-05"},
     {"scanned", Measure::Scanned, "a date", "scanned:last90days"},
     {"depth", Measure::Depth, "a number", "depth:1"},
     {"len", Measure::Length, "a number", "len:>200"},
     {"copies", Measure::Copies, "a number", "copies:1"}}};

struct MediumField {
    std::string_view name;
    MediumCondition::Test test;
};
constexpr std::array<MediumField, 3> mediumFields{{{"medium", MediumCondition::Test::On},
                                                   {"only", MediumCondition::Test::Only},
                                                   {"missing", MediumCondition::Test::Missing}}};

struct PropertyWord {
    std::string_view word;
    Property property;
};
constexpr std::array<PropertyWord, 11> propertyWords{{{"kw", Property::Keywords},
                                                      {"keyword", Property::Keywords},
                                                      {"keywords", Property::Keywords},
                                                      {"note", Property::Notes},
                                                      {"notes", Property::Notes},
                                                      {"note1", Property::Notes1},
                                                      {"notes1", Property::Notes1},
                                                      {"note2", Property::Notes2},
                                                      {"notes2", Property::Notes2},
                                                      {"date", Property::Date},
                                                      {"ext", Property::Extension}}};

struct FileKind {
    std::string_view word;
    std::string_view extensions;  ///< with ";" between
};
constexpr std::string_view videos =
    "3gp;asf;avi;divx;flv;m2ts;m4v;mkv;mov;mp4;mpeg;mpg;mts;ogv;rm;"
    "vob;webm;wmv";
constexpr std::string_view sounds =
    "aac;aif;aiff;amr;ape;flac;m4a;mid;midi;mka;mp2;mp3;oga;ogg;"
    "opus;wav;wma";
constexpr std::string_view pictures =
    "arw;bmp;cr2;dng;gif;heic;heif;ico;jpeg;jpg;nef;orf;pcx;png;"
    "psd;raw;svg;tga;tif;tiff;webp;xcf";
constexpr std::string_view documents =
    "csv;doc;docx;epub;htm;html;md;odp;ods;odt;pdf;ppt;pptx;ps;"
    "rtf;tex;txt;xls;xlsx";
constexpr std::string_view packed = "7z;arj;bz2;cab;deb;gz;iso;lha;lzh;rar;rpm;tar;tgz;xz;zip;zst";
constexpr std::string_view programs = "apk;appimage;bat;cmd;com;dll;exe;jar;msi;ps1;py;sh;so";
constexpr std::array<FileKind, 10> fileKinds{{{"video", videos},
                                              {"movie", videos},
                                              {"audio", sounds},
                                              {"music", sounds},
                                              {"picture", pictures},
                                              {"image", pictures},
                                              {"photo", pictures},
                                              {"document", documents},
                                              {"archive", packed},
                                              {"program", programs}}};

template <typename Table>
auto entryOf(const Table& table, std::string_view name) {
    const auto found =
        std::ranges::find_if(table, [&](const auto& entry) { return entry.name == name; });
    return found == table.end() ? nullptr : &*found;
}

Node textNode(TextTarget target, TextMatch match, std::string text, FoldOptions fold = {}) {
    Node node;
    node.kind = Node::Kind::Text;
    node.text = {target, match, fold, std::move(text)};
    return node;
}

Node propertyNode(Property property) {
    Node node;
    node.kind = Node::Kind::Property;
    node.property.property = property;
    return node;
}

Node numberNode(Measure measure, Span span) {
    Node node;
    node.kind = Node::Kind::Number;
    node.number = {measure, span};
    return node;
}

Node extensionNode(std::vector<std::string> extensions) {
    Node node;
    node.kind = Node::Kind::Extension;
    node.extension.extensions = std::move(extensions);
    return node;
}

bool looksAtPaths(TextTarget target) {
    return target == TextTarget::WholePath || target == TextTarget::Folder;
}

/// The stored paths have "\" between folders.
void useStoredSeparators(QueryWord& word) { std::ranges::replace(word.text, '/', '\\'); }

/// The folded form of a word in which "*" and "?" are wild.
std::string patternOf(const QueryWord& word, FoldOptions fold) {
    std::string pattern;
    std::size_t start = 0;
    while (start <= word.text.size()) {
        const std::size_t wild = std::min(word.find("*?", start), word.text.size());
        appendFolded(std::string_view(word.text).substr(start, wild - start), fold, pattern);
        if (wild < word.text.size()) {
            pattern +=
                word.text[wild] == '*' ? TextCondition::anyText : TextCondition::anyCharacter;
        }
        start = wild + 1;
    }
    return pattern;
}

std::vector<std::string> listed(std::string_view list) {
    std::vector<std::string> words;
    for (std::size_t start = 0; start < list.size();) {
        const std::size_t end = std::min(list.find(';', start), list.size());
        words.emplace_back(list.substr(start, end - start));
        start = end + 1;
    }
    return words;
}

bool isFieldName(std::string_view text) {
    return !text.empty() && std::ranges::all_of(text, [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
    });
}

/// "c:", "12:" and "http://" begin places, not fields.
bool beginsPlace(std::string_view name, std::string_view rest) {
    return name.size() == 1 || rest.starts_with('\\') || rest.starts_with('/') ||
           std::ranges::all_of(name, [](char c) { return c >= '0' && c <= '9'; });
}

/// "7", "3..7"; a number in quotation marks is a name.
std::optional<Span> mediumIds(const QueryWord& word) {
    if (std::ranges::find(word.isQuoted, true) != word.isQuoted.end()) {
        return std::nullopt;
    }
    const SpanValue value = readNumberSpan(word.text);
    return value.state == SpanValue::State::Complete ? value.span : std::nullopt;
}

/// The name before the first ":" of a word, where it has the form of a field's.
std::optional<std::string> fieldNameOf(const QueryWord& word) {
    const std::size_t colon = word.text.find(':');
    if (colon == std::string::npos) {
        return std::nullopt;
    }
    for (std::size_t i = 0; i <= colon; ++i) {
        if (word.isQuoted[i]) {
            return std::nullopt;
        }
    }
    const std::string name = word.text.substr(0, colon);
    return isFieldName(name) ? std::optional(foldedText(name)) : std::nullopt;
}

constexpr std::array<std::string_view, 6> otherFields{"ext", "type", "kind",
                                                      "has", "sort", "limit"};

bool isField(std::string_view name) {
    return entryOf(textFields, name) != nullptr || entryOf(numberFields, name) != nullptr ||
           entryOf(mediumFields, name) != nullptr ||
           std::ranges::find(otherFields, name) != otherFields.end();
}

}  // namespace

std::optional<Node> TermReader::read(const QueryToken& token) {
    token_ = token;
    if (token.isUnclosed) {
        note(Notice::Kind::Incomplete, "the closing quotation mark is missing");
    }
    QueryWord word = token.word;
    while (const std::optional<std::string> name = fieldNameOf(word)) {
        QueryWord rest = word.from(name->size() + 1);
        if (isField(*name)) {
            field_ = *name;
            return withFlags(readField(rest));
        }
        if (!readModifier(*name)) {
            if (!beginsPlace(*name, rest.text)) {
                note(Notice::Kind::Unknown,
                     "\"" + *name + ":\" is no field, so it is looked for as text");
            }
            break;
        }
        field_ = *name;
        word = std::move(rest);
    }
    return readPlain(word);
}

std::optional<Node> TermReader::endWaiting() {
    if (isWaiting()) {
        noteMissing("a word", "");
    }
    return withFlags(std::nullopt);
}

bool TermReader::readModifier(std::string_view name) {
    if (name == "case") {
        modifiers_.fold.keepCase = true;
    } else if (name == "accents") {
        modifiers_.fold.keepAccents = true;
    } else if (name == "whole") {
        modifiers_.isWhole = true;
    } else if (name == "start") {
        modifiers_.isStart = true;
    } else if (name == "end") {
        modifiers_.isEnd = true;
    } else if (name == "regex") {
        modifiers_.isExpression = true;
    } else if (name == "path") {
        modifiers_.target = TextTarget::WholePath;
    } else if (name == "nopath" || name == "name") {
        modifiers_.target = TextTarget::Name;
    } else if (name == "file") {
        modifiers_.flags.push_back(propertyNode(Property::File));
    } else if (name == "folder") {
        modifiers_.flags.push_back(propertyNode(Property::Folder));
    } else if (name == "dup") {
        modifiers_.flags.push_back(numberNode(Measure::Copies, {2, Span::highest}));
    } else {
        return false;
    }
    return true;
}

/// The flags that stand before a word belong to what it says.
std::optional<Node> TermReader::withFlags(std::optional<Node> node) {
    std::vector<Node> parts = std::exchange(modifiers_, {}).flags;
    if (node) {
        parts.push_back(std::move(*node));
    }
    return parts.empty() ? std::nullopt
                         : std::optional(Node::joined(Node::Kind::And, std::move(parts)));
}

std::optional<Node> TermReader::readPlain(const QueryWord& word) {
    if (word.isEmpty()) {
        // Other modifiers wait for the next word; flags are complete in themselves.
        return isWaiting() ? std::nullopt : withFlags(std::nullopt);
    }
    return withFlags(readText(TextTarget::NameOrPath, word));
}

std::optional<Node> TermReader::readField(const QueryWord& value) {
    if (value.isEmpty() && !token_.hadQuotes) {
        noteMissing(whatIsMissing(), exampleOf());
        return std::nullopt;
    }
    if (const TextField* const field = entryOf(textFields, field_)) {
        return readText(field->target, value);
    }
    if (entryOf(numberFields, field_) != nullptr) {
        return readNumber(value);
    }
    if (entryOf(mediumFields, field_) != nullptr) {
        return readMedia(value);
    }
    if (field_ == "ext") {
        return readExtensions(value);
    }
    if (field_ == "type") {
        return readType(value);
    }
    if (field_ == "kind") {
        return readDriveKind(value);
    }
    if (field_ == "has") {
        return readHas(value);
    }
    if (field_ == "sort") {
        readSort(value);
    } else {
        readLimit(value);
    }
    return std::nullopt;
}

std::optional<Node> TermReader::readText(TextTarget target, QueryWord word) {
    if (target == TextTarget::NameOrPath && modifiers_.target) {
        target = *modifiers_.target;
    }
    if (modifiers_.isExpression) {
        return readExpression(target, word);
    }
    const bool isPattern = word.find("*?") != std::string::npos;
    const bool isAtEdge = modifiers_.isStart || modifiers_.isEnd;
    if (target == TextTarget::NameOrPath) {
        if (word.text.find_first_of("/\\") != std::string::npos) {
            target = TextTarget::WholePath;
        } else if (isPattern || isAtEdge) {
            target = TextTarget::Name;
        }
    }
    if (looksAtPaths(target)) {
        useStoredSeparators(word);
    }
    // A folder's path ends without one.
    while (target == TextTarget::Folder && !word.isEmpty() && word.text.back() == '\\') {
        word = word.part(0, word.text.size() - 1);
    }
    Node node = isPattern
                    ? textNode(target, TextMatch::Pattern, patternOf(word, modifiers_.fold))
                    : textNode(target, matchOfModifiers(), foldedText(word.text, modifiers_.fold));
    node.text.fold = modifiers_.fold;
    return node.text.text.empty() ? std::nullopt : std::optional(std::move(node));
}

TextMatch TermReader::matchOfModifiers() const {
    if (modifiers_.isStart) {
        return modifiers_.isEnd ? TextMatch::Equals : TextMatch::Starts;
    }
    if (modifiers_.isEnd) {
        return TextMatch::Ends;
    }
    return modifiers_.isWhole ? TextMatch::WholeWord : TextMatch::Contains;
}

std::optional<Node> TermReader::readExpression(TextTarget target, const QueryWord& word) {
    const std::string fault = expressionFault(word.text);
    if (!fault.empty()) {
        note(Notice::Kind::Invalid, "regex: " + fault);
        return std::nullopt;
    }
    Node node = textNode(target == TextTarget::NameOrPath ? TextTarget::Name : target,
                         TextMatch::Expression, word.text);
    // Accents count in an expression in any case.
    node.text.fold = {modifiers_.fold.keepCase, false};
    return node;
}

std::optional<Node> TermReader::readNumber(const QueryWord& value) {
    const NumberField& field = *entryOf(numberFields, field_);
    const bool isDate = field.measure == Measure::Modified || field.measure == Measure::Created ||
                        field.measure == Measure::Scanned;
    const SpanValue read = field.measure == Measure::Size ? readSizeSpan(value.text)
                           : isDate                       ? readDateSpan(value.text, now_)
                                                          : readNumberSpan(value.text);
    if (read.state == SpanValue::State::Unfinished) {
        noteMissing(field.what, field.example);
    } else if (read.state == SpanValue::State::Senseless) {
        note(Notice::Kind::Invalid, field_ + ": \"" + value.text + "\" is not " +
                                        std::string(field.what) + " such as " +
                                        std::string(field.example));
    }
    return read.span ? std::optional(numberNode(field.measure, *read.span)) : std::nullopt;
}

std::optional<Node> TermReader::readMedia(const QueryWord& value) {
    Node node;
    node.kind = Node::Kind::Medium;
    node.medium.test = entryOf(mediumFields, field_)->test;
    for (const QueryWord& word : value.split(";")) {
        node.medium.media.push_back({foldedText(word.text), mediumIds(word)});
    }
    if (node.medium.media.empty()) {
        noteMissing(whatIsMissing(), exampleOf());
        return std::nullopt;
    }
    return node;
}

std::optional<Node> TermReader::readDriveKind(const QueryWord& value) {
    Node node;
    node.kind = Node::Kind::DriveKind;
    node.driveKind.text = foldedText(value.text);
    return node;
}

std::optional<Node> TermReader::readExtensions(const QueryWord& value) {
    std::vector<std::string> plain;
    std::vector<Node> parts;
    for (QueryWord& word : value.split(";,")) {
        if (word.text.front() == '.') {
            word = word.from(1);
        }
        if (word.find("*?") != std::string::npos) {
            QueryWord pattern;
            pattern.text = "*." + word.text;
            pattern.isQuoted = {false, true};
            pattern.isQuoted.insert(pattern.isQuoted.end(), word.isQuoted.begin(),
                                    word.isQuoted.end());
            parts.push_back(Node::joined(
                Node::Kind::And,
                {propertyNode(Property::File),
                 textNode(TextTarget::Name, TextMatch::Pattern, patternOf(pattern, {}))}));
        } else if (!word.isEmpty()) {
            plain.push_back(foldedText(word.text));
        }
    }
    // Nothing in quotation marks: files without an extension.
    if (value.isEmpty()) {
        plain.emplace_back();
    }
    if (!plain.empty()) {
        parts.push_back(extensionNode(std::move(plain)));
    }
    if (parts.empty()) {
        noteMissing(whatIsMissing(), exampleOf());
        return std::nullopt;
    }
    return Node::joined(Node::Kind::Or, std::move(parts));
}

std::optional<Node> TermReader::readType(const QueryWord& value) {
    std::optional<Node> text = readText(TextTarget::Type, value);
    const std::string word = foldedText(value.text);
    const auto* const kind = std::ranges::find_if(fileKinds, [&](const FileKind& each) {
        return word == each.word || word == std::string(each.word) + "s";
    });
    if (!text || kind == fileKinds.end()) {
        return text;
    }
    return Node::joined(Node::Kind::Or, {extensionNode(listed(kind->extensions)), *text});
}

std::optional<Node> TermReader::readHas(const QueryWord& value) {
    const std::string word = foldedText(value.text);
    for (const PropertyWord& each : propertyWords) {
        if (each.word == word) {
            return propertyNode(each.property);
        }
    }
    const bool mayBecomeOne = std::ranges::any_of(
        propertyWords, [&](const PropertyWord& each) { return each.word.starts_with(word); });
    note(mayBecomeOne ? Notice::Kind::Incomplete : Notice::Kind::Invalid,
         "has: asks for kw, note, note1, note2, date or ext");
    return std::nullopt;
}

void TermReader::readSort(const QueryWord& value) {
    for (const QueryWord& word : value.split(";,")) {
        const bool isDescending = word.text.front() == '-';
        const std::string_view key = std::string_view(word.text).substr(isDescending ? 1 : 0);
        if (const auto column = columnOfKey(key)) {
            query_.sort.push_back({*column, isDescending});
            continue;
        }
        const std::string folded = foldedText(key);
        const bool mayBecomeOne = std::ranges::any_of(allResultColumns, [&](ResultColumn column) {
            return columnKey(column).starts_with(folded);
        });
        note(mayBecomeOne ? Notice::Kind::Incomplete : Notice::Kind::Invalid,
             "sort: a column is missing, such as sort:-size");
    }
}

void TermReader::readLimit(const QueryWord& value) {
    const SpanValue number = readNumberSpan(value.text);
    const bool isOne = number.state == SpanValue::State::Complete &&
                       number.span->first == number.span->last && number.span->first > 0;
    if (!isOne) {
        note(Notice::Kind::Invalid,
             "limit: \"" + value.text + "\" is not a number such as limit:500");
        return;
    }
    query_.limit =
        static_cast<std::uint32_t>(std::min<std::int64_t>(number.span->first, UINT32_MAX));
}

std::string_view TermReader::whatIsMissing() const {
    if (const NumberField* const field = entryOf(numberFields, field_)) {
        return field->what;
    }
    if (entryOf(mediumFields, field_) != nullptr) {
        return "a medium";
    }
    return field_ == "sort" ? "a column" : field_ == "limit" ? "a number" : "a word";
}

std::string_view TermReader::exampleOf() const {
    if (const NumberField* const field = entryOf(numberFields, field_)) {
        return field->example;
    }
    for (const QueryField& field : queryFields()) {
        if (field.word.substr(0, field.word.size() - 1) == field_) {
            return field.example;
        }
    }
    return {};
}

void TermReader::noteMissing(std::string_view what, std::string_view example) {
    note(Notice::Kind::Incomplete, field_ + ": " + std::string(what) + " is missing" +
                                       (example.empty() ? "" : ", such as ") +
                                       std::string(example));
}

void TermReader::note(Notice::Kind kind, std::string text) {
    query_.notices.push_back({kind, std::move(text), token_.position, token_.length});
}

}  // namespace search
