#include "jet/filter.h"

#include "base/failure.h"
#include "base/text.h"
#include "jet/text_codec.h"

namespace jet {

namespace {

[[noreturn]] void refuse(std::string_view condition, const std::string& why) {
    throw base::EngineFailure(base::EngineFault::Usage,
                              "the filter " + std::string(condition) + ": " + why);
}

/// Takes a condition apart.
class ConditionReader {
  public:
    explicit ConditionReader(std::string_view condition) : condition_(condition) {}

    bool atEnd() {
        skipBlanks();
        return at_ == condition_.size();
    }

    /// A field's name, bare or in square brackets.
    std::string_view fieldName() {
        skipBlanks();
        if (at_ < condition_.size() && condition_[at_] == '[') {
            const std::size_t close = condition_.find(']', at_);
            if (close == std::string_view::npos) {
                refuse(condition_, "a bracket is not closed");
            }
            const std::string_view name = condition_.substr(at_ + 1, close - at_ - 1);
            at_ = close + 1;
            return name;
        }
        const std::size_t end = std::min(condition_.find_first_of(" ='<>", at_), condition_.size());
        const std::string_view name = condition_.substr(at_, end - at_);
        if (name.empty()) {
            refuse(condition_, "a field's name is missing");
        }
        at_ = end;
        return name;
    }

    void equalsSign() {
        skipBlanks();
        if (at_ == condition_.size() || condition_[at_] != '=') {
            refuse(condition_, "\"=\" is missing after a field's name");
        }
        ++at_;
    }

    std::string quotedText() {
        skipBlanks();
        if (at_ == condition_.size() || condition_[at_] != '\'') {
            refuse(condition_, "a text in quotation marks is missing");
        }
        std::string text;
        for (++at_; at_ < condition_.size(); ++at_) {
            if (condition_[at_] == '\'') {
                ++at_;
                if (at_ == condition_.size() || condition_[at_] != '\'') {
                    return text;
                }
            }
            text.push_back(condition_[at_]);
        }
        refuse(condition_, "a quotation mark is not closed");
    }

    void conjunction() {
        skipBlanks();
        if (!base::equalIgnoringCase(condition_.substr(at_, 3), "AND") ||
            condition_.substr(at_ + 3, 1) != " ") {
            refuse(condition_, "\"AND\" is expected between comparisons");
        }
        at_ += 3;
    }

  private:
    void skipBlanks() {
        while (at_ < condition_.size() && condition_[at_] == ' ') {
            ++at_;
        }
    }

    std::string_view condition_;
    std::size_t at_ = 0;
};

bool isNumber(DataType type) {
    return type == DataType::Byte || type == DataType::Integer || type == DataType::Long ||
           type == DataType::Currency || type == DataType::Single || type == DataType::Double ||
           type == DataType::Date || type == DataType::Numeric || type == DataType::Boolean;
}

bool isAscii(std::string_view text) {
    for (const char c : text) {
        if (static_cast<unsigned char>(c) >= 0x80) {
            return false;
        }
    }
    return true;
}

}  // namespace

Filter::Filter(std::string_view condition, const StoredTable& table, const Format& format)
    : table_(&table) {
    ConditionReader reader(condition);
    if (reader.atEnd()) {
        return;
    }
    const TableDefinition definition = table.definition();
    for (;;) {
        const std::string_view name = reader.fieldName();
        const int column = definition.find(name);
        if (column < 0) {
            throw base::EngineFailure(base::EngineFault::NotFound,
                                      "table " + table.name + " has no field " + std::string(name));
        }
        reader.equalsSign();
        const std::string text = reader.quotedText();
        Comparison comparison;
        comparison.column = static_cast<std::size_t>(column);
        const StoredColumn& stored = table.columns[comparison.column];
        comparison.isLong = stored.field.type == DataType::Long;
        comparison.numeric = isNumber(stored.field.type);
        if (comparison.numeric && !parseNumber(text, comparison.number)) {
            refuse(condition,
                   "field " + stored.field.name + " is a number and '" + text + "' is none");
        }
        comparison.folded = base::foldedCase(text);
        if (stored.field.type == DataType::Text && !text.empty()) {
            appendEncodedText(format, text, stored.compressed, comparison.storedText);
            // In code page 1252 other texts may have the same bytes ("?").
            std::string readBack;
            appendDecodedText(format, comparison.storedText, readBack);
            if (readBack != text) {
                comparison.storedText.clear();
            }
        }
        comparisons_.push_back(std::move(comparison));
        if (reader.atEnd()) {
            return;
        }
        reader.conjunction();
    }
}

bool Filter::matches(const RowView& row, const FieldCodec& codec) const {
    for (const Comparison& comparison : comparisons_) {
        if (!holds(comparison, row, codec)) {
            return false;
        }
    }
    return true;
}

bool Filter::holds(const Comparison& comparison, const RowView& row,
                   const FieldCodec& codec) const {
    const StoredColumn& column = table_->columns[comparison.column];
    if (column.field.type != DataType::Boolean && !row.isPresent(column.number)) {
        return false;
    }
    if (comparison.isLong) {
        return codec.integer(comparison.column, row) == comparison.number;
    }
    // Most rows hold the very bytes of the text looked for, or a text of the same length that
    // differs.
    const std::string_view bytes = asText(row.bytes(column));
    if (!comparison.storedText.empty() && bytes == comparison.storedText) {
        return true;
    }
    codec.readText(comparison.column, row, buffer_);
    if (!comparison.numeric) {
        if (isAscii(buffer_) && isAscii(comparison.folded) &&
            buffer_.size() != comparison.folded.size()) {
            return false;
        }
        return base::equalIgnoringCase(buffer_, comparison.folded);
    }
    if (column.field.type == DataType::Boolean) {
        return (buffer_ == "true") == (comparison.number != 0);
    }
    const Value value = codec.value(comparison.column, row);
    if (const Date* const date = std::get_if<Date>(&value)) {
        return date->days == comparison.number;
    }
    double number = 0;
    return parseNumber(buffer_, number) && number == comparison.number;
}

}  // namespace jet
