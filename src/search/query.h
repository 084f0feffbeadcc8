#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "search/local_time.h"
#include "search/result_column.h"
#include "search/text_fold.h"

namespace search {

/// Which of an entry's texts a condition looks at.
enum class TextTarget {
    NameOrPath,  ///< the name, or the path on its medium; the usual one
    Name,
    WholePath,  ///< path and name with "\" between, the medium's number included
    Folder,     ///< the path of the folder that holds the entry
    Type,
    Keywords,
    Notes,  ///< either of the two
};

/// How the text must be met there.
enum class TextMatch {
    Contains,
    WholeWord,  ///< contains it, with no letter or digit on either side
    Starts,
    Ends,
    Equals,
    Pattern,     ///< the whole text is of this form; anyText and anyCharacter are wild
    Expression,  ///< a regular expression finds something in it
};

/// One test on the text of an entry.
struct TextCondition {
    /// Stand for "*" and "?" in the text of a Pattern; neither is part of UTF-8.
    static constexpr char anyText = '\xFE';
    static constexpr char anyCharacter = '\xFD';

    TextTarget target = TextTarget::NameOrPath;
    TextMatch match = TextMatch::Contains;
    FoldOptions fold;
    /// In the folded form that `fold` names; the source of an Expression as it was typed.
    std::string text;

    friend bool operator==(const TextCondition&, const TextCondition&) = default;
};

/// A span of whole numbers; both ends belong to it. Of times it is a span of seconds.
struct Span {
    static constexpr std::int64_t lowest = std::numeric_limits<std::int64_t>::min();
    static constexpr std::int64_t highest = std::numeric_limits<std::int64_t>::max();

    std::int64_t first = lowest;
    std::int64_t last = highest;

    bool contains(std::int64_t number) const { return first <= number && number <= last; }
    friend bool operator==(const Span&, const Span&) = default;
};

/// What a NumberCondition measures.
enum class Measure {
    Size,      ///< bytes, of files
    Modified,  ///< LocalTime
    Created,   ///< LocalTime
    Scanned,   ///< LocalTime: when the medium's entries were last read in
    Depth,     ///< 1 for what lies at the top of its medium
    Length,    ///< UTF-16 units of the whole path
    Copies,    ///< entries of the same name and size in the archive, this one included
};

struct NumberCondition {
    Measure measure = Measure::Size;
    Span span;
    friend bool operator==(const NumberCondition&, const NumberCondition&) = default;
};

/// A medium as a query names it: by number, or by its name or label.
struct MediumName {
    std::string text;  ///< folded
    std::optional<Span> ids;
    friend bool operator==(const MediumName&, const MediumName&) = default;
};

/// A test on the media of an entry and of its copies.
struct MediumCondition {
    enum class Test {
        On,       ///< the entry is on one of them
        Only,     ///< the entry and all its copies are
        Missing,  ///< neither it nor any of its copies is
    };
    Test test = Test::On;
    std::vector<MediumName> media;
    friend bool operator==(const MediumCondition&, const MediumCondition&) = default;
};

/// The drive kind of the entry's medium contains the text (folded).
struct DriveKindCondition {
    std::string text;
    friend bool operator==(const DriveKindCondition&, const DriveKindCondition&) = default;
};

/// The entry's extension is one of these (folded, without ".").
struct ExtensionCondition {
    std::vector<std::string> extensions;
    friend bool operator==(const ExtensionCondition&, const ExtensionCondition&) = default;
};

/// What an entry is or has.
enum class Property { File, Folder, Keywords, Notes, Notes1, Notes2, Date, Extension };

struct PropertyCondition {
    Property property = Property::File;
    friend bool operator==(const PropertyCondition&, const PropertyCondition&) = default;
};

/// A query as a tree. An And without parts lets everything through, an Or without parts nothing.
struct Node {
    enum class Kind { And, Or, Not, Text, Number, Medium, DriveKind, Extension, Property };

    Kind kind = Kind::And;
    std::vector<Node> parts;  ///< of And and Or, and the one of Not
    // Of the other kinds the one that the kind names counts.
    TextCondition text;
    NumberCondition number;
    MediumCondition medium;
    DriveKindCondition driveKind;
    ExtensionCondition extension;
    PropertyCondition property;

    /// All or any of some conditions, at least one; one alone is just that.
    static Node joined(Kind kind, std::vector<Node> parts) {
        if (parts.size() == 1) {
            return std::move(parts.front());
        }
        Node node;
        node.kind = kind;
        node.parts = std::move(parts);
        return node;
    }

    bool isEverything() const { return kind == Kind::And && parts.empty(); }
    friend bool operator==(const Node&, const Node&) = default;
};

/// One column of an order.
struct SortKey {
    ResultColumn column = ResultColumn::Name;
    bool isDescending = false;
    friend bool operator==(const SortKey&, const SortKey&) = default;
};

/// Something that the status line should say about the query line.
struct Notice {
    enum class Kind {
        Incomplete,  ///< not finished yet; what is there so far was left out
        Unknown,     ///< no such field: looked for as plain text
        Invalid,     ///< cannot be understood; left out
    };
    Kind kind = Kind::Incomplete;
    std::string text;          ///< a sentence without its full stop
    std::size_t position = 0;  ///< of the bytes of the query line that it is about
    std::size_t length = 0;
    friend bool operator==(const Notice&, const Notice&) = default;
};

/// What a query line means. A value; made by parseQuery().
struct Query {
    Node condition;
    std::vector<SortKey> sort;  ///< none: by rank
    std::optional<std::uint32_t> limit;
    std::vector<Notice> notices;

    bool isEverything() const { return condition.isEverything(); }
};

}  // namespace search
