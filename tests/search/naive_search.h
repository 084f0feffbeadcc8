#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "base/text.h"
#include "search/index.h"
#include "search/medium_match.h"
#include "search/query.h"
#include "search/text_test.h"

namespace naive {

using search::Index;
using search::Node;
using search::Row;

/// The same questions as the engine's, answered for one row at a time in the plainest way.
class Search {
  public:
    explicit Search(const Index& index) : index_(index) {}

    std::vector<Row> rows(const Node& node) const {
        std::vector<Row> found;
        for (Row row = 0; row < index_.size(); ++row) {
            if (fulfils(row, node)) {
                found.push_back(row);
            }
        }
        return found;
    }

    bool fulfils(Row row, const Node& node) const {
        switch (node.kind) {
            case Node::Kind::And:
                return std::ranges::all_of(node.parts,
                                           [&](const Node& part) { return fulfils(row, part); });
            case Node::Kind::Or:
                return std::ranges::any_of(node.parts,
                                           [&](const Node& part) { return fulfils(row, part); });
            case Node::Kind::Not:
                return !fulfils(row, node.parts.front());
            case Node::Kind::Text:
                return text(row, node.text);
            case Node::Kind::Number:
                return number(row, node.number);
            case Node::Kind::Medium:
                return medium(row, node.medium);
            case Node::Kind::DriveKind:
                return has(search::foldedText(index_.medium(row).mediaType), node.driveKind.text);
            case Node::Kind::Extension:
                return !index_.isFolder(row) &&
                       std::ranges::find(node.extension.extensions, index_.extension(row)) !=
                           node.extension.extensions.end();
            case Node::Kind::Property:
                break;
        }
        return property(row, node.property.property);
    }

  private:
    static bool has(const std::string& text, const std::string& part) {
        return text.find(part) != std::string::npos;
    }

    static bool meets(const search::TextCondition& asked, std::string_view stored) {
        using search::TextMatch;
        if (asked.match == TextMatch::Pattern || asked.match == TextMatch::Expression ||
            asked.match == TextMatch::WholeWord) {
            return search::TextTest(asked).matches(search::foldedText(stored), stored);
        }
        const std::string text = search::foldedText(stored, asked.fold);
        switch (asked.match) {
            case TextMatch::Starts:
                return text.starts_with(asked.text);
            case TextMatch::Ends:
                return text.ends_with(asked.text);
            case TextMatch::Equals:
                return text == asked.text;
            default:
                return has(text, asked.text);
        }
    }

    bool text(Row row, const search::TextCondition& asked) const {
        using search::TextTarget;
        const std::string_view path = index_.path(row);
        const std::size_t colon = path.find(':');
        switch (asked.target) {
            case TextTarget::NameOrPath:
                return meets(asked, index_.name(row)) || meets(asked, path.substr(colon + 1));
            case TextTarget::Name:
                return meets(asked, index_.name(row));
            case TextTarget::WholePath:
                return meets(asked, index_.wholePath(row));
            case TextTarget::Folder:
                return meets(asked, path);
            case TextTarget::Type:
                return meets(asked, index_.type(row));
            case TextTarget::Keywords:
                return meets(asked, index_.keywords(row));
            case TextTarget::Notes:
                break;
        }
        return meets(asked, index_.notes1(row)) || meets(asked, index_.notes2(row));
    }

    std::vector<Row> copiesOf(Row row) const {
        std::vector<Row> copies;
        for (Row other = 0; other < index_.size(); ++other) {
            if (index_.isFolder(other) == index_.isFolder(row) &&
                index_.size(other) == index_.size(row) &&
                search::foldedText(index_.name(other)) == search::foldedText(index_.name(row))) {
                copies.push_back(other);
            }
        }
        return copies;
    }

    bool number(Row row, const search::NumberCondition& asked) const {
        using search::Measure;
        const auto holds = [&](std::int64_t number) {
            return asked.span.first <= number && number <= asked.span.last;
        };
        const auto holdsTime = [&](search::LocalTime time) {
            return time != search::unknownTime && holds(time);
        };
        const std::string whole = index_.wholePath(row);
        switch (asked.measure) {
            case Measure::Size:
                return !index_.isFolder(row) &&
                       (index_.size(row) >= 0 ? holds(index_.size(row))
                                              : asked.span.last >= (std::int64_t{1} << 31));
            case Measure::Modified:
                return holdsTime(search::parseArchiveDate(index_.modifiedText(row)));
            case Measure::Created:
                return holdsTime(search::parseArchiveDate(index_.createdText(row)));
            case Measure::Scanned:
                return holdsTime(search::parseArchiveDate(index_.medium(row).archiveUpdate)) ||
                       (index_.medium(row).archiveUpdate.empty() &&
                        holdsTime(search::parseArchiveDate(index_.medium(row).archiveDate)));
            case Measure::Depth:
                return holds(std::count(whole.begin(), whole.end(), '\\'));
            case Measure::Length:
                return holds(static_cast<std::int64_t>(base::utf16Length(whole)));
            case Measure::Copies:
                break;
        }
        return holds(static_cast<std::int64_t>(copiesOf(row).size()));
    }

    bool medium(Row row, const search::MediumCondition& asked) const {
        using Test = search::MediumCondition::Test;
        const std::vector<bool> chosen = search::mediaNamed(index_, asked.media);
        const auto isOn = [&](Row each) { return chosen[index_.mediumPosition(each)]; };
        if (asked.test == Test::On) {
            return isOn(row);
        }
        const std::vector<Row> copies = copiesOf(row);
        return asked.test == Test::Only ? std::ranges::all_of(copies, isOn)
                                        : std::ranges::none_of(copies, isOn);
    }

    bool property(Row row, search::Property property) const {
        const base::ScanEntry entry = index_.entry(row);
        switch (property) {
            case search::Property::File:
                return entry.Folder == "file";
            case search::Property::Folder:
                return entry.Folder == "folder";
            case search::Property::Keywords:
                return !entry.keywords.empty();
            case search::Property::Notes:
                return !entry.Notes1.empty() || !entry.Notes2.empty();
            case search::Property::Notes1:
                return !entry.Notes1.empty();
            case search::Property::Notes2:
                return !entry.Notes2.empty();
            case search::Property::Date:
                return index_.modified(row) != search::unknownTime;
            case search::Property::Extension:
                break;
        }
        return !index_.extension(row).empty();
    }

    const Index& index_;
};

}  // namespace naive
