#include "cli/table_writer.h"

#include <gtest/gtest.h>

#include <sstream>

#include "base/failure.h"
#include "cli/json_writer.h"
#include "cli/text_writer.h"

namespace cli {
namespace {

const std::vector<Column> columns{{"name", false}, {"size", true}};

std::vector<Cell> cells(const std::string& name, std::int64_t size) {
    return {Cell::ofText(name), Cell::ofNumber(size)};
}

std::string written(OutputFormat format, const std::vector<std::vector<Cell>>& rows,
                    Audience audience = Audience::Program) {
    std::ostringstream stream;
    const auto writer = makeTableWriter(format, stream, audience);
    writer->begin(columns);
    for (const auto& row : rows) {
        writer->row(row);
    }
    writer->end();
    return stream.str();
}

TEST(TsvWriter, WritesAHeaderAndALineForEachRow) {
    EXPECT_EQ(written(OutputFormat::Tsv, {cells("a", 1), cells("b", -2)}),
              "name\tsize\na\t1\nb\t-2\n");
}

TEST(TsvWriter, EscapesWhatWouldBreakALine) {
    EXPECT_EQ(written(OutputFormat::Tsv, {cells("a\tb\nc\rd\\n", 1)}),
              "name\tsize\na\\tb\\nc\\rd\\\\n\t1\n");
}

TEST(TsvWriter, TellsNullFromEmptyAndFromTheTextThatLooksLikeIt) {
    EXPECT_EQ(written(OutputFormat::Tsv, {{Cell(), Cell()}, cells("", 0), cells("\\N", 0)}),
              "name\tsize\n\\N\t\\N\n\t0\n\\\\N\t0\n");
}

TEST(TsvWriter, LetsOtherControlCharactersPassToPrograms) {
    EXPECT_EQ(written(OutputFormat::Tsv, {cells("\x1b[2J", 1)}), "name\tsize\n\x1b[2J\t1\n");
}

TEST(TsvWriter, MakesThemVisibleOnATerminal) {
    EXPECT_EQ(written(OutputFormat::Tsv, {cells("\x1b[2J\\\n", 1)}, Audience::Terminal),
              "name\tsize\n\\x1b[2J\\\\\\n\t1\n");
}

TEST(CsvWriter, QuotesWhatNeedsIt) {
    EXPECT_EQ(
        written(OutputFormat::Csv, {cells("plain", 1), cells("a,b", 2), cells("say \"hi\"", 3),
                                    cells("two\r\nlines", 4), cells(" blank", 5)}),
        "name,size\r\nplain,1\r\n\"a,b\",2\r\n\"say \"\"hi\"\"\",3\r\n\"two\r\nlines\",4\r\n"
        "\" blank\",5\r\n");
}

TEST(CsvWriter, TellsNullFromEmpty) {
    EXPECT_EQ(written(OutputFormat::Csv, {{Cell(), Cell()}, cells("", 0)}),
              "name,size\r\n,\r\n\"\",0\r\n");
}

TEST(CsvWriter, MakesControlCharactersVisibleOnATerminal) {
    EXPECT_EQ(written(OutputFormat::Csv, {cells("\x1b\n", 1)}, Audience::Terminal),
              "name,size\r\n\\x1b\\n,1\r\n");
}

TEST(JsonWriter, WritesAnArrayWithOneObjectALine) {
    EXPECT_EQ(written(OutputFormat::Json, {cells("a", 1), {Cell(), Cell()}}),
              "[\n{\"name\":\"a\",\"size\":1},\n{\"name\":null,\"size\":null}\n]\n");
}

TEST(JsonWriter, WritesAnEmptyArrayForNoRows) {
    EXPECT_EQ(written(OutputFormat::Json, {}), "[\n]\n");
}

TEST(JsonWriter, EscapesControlCharactersAndQuotes) {
    std::string text;
    appendJsonString("\"\\\n\r\t\x01\x7f\u202E", text);
    EXPECT_EQ(text, "\"\\\"\\\\\\n\\r\\t\\u0001\\u007f\\u202e\"");
}

TEST(JsonWriter, WritesHiddenCharactersBeyondSixteenBitsAsPairs) {
    std::string text;
    appendJsonString("\U000E0041", text);
    EXPECT_EQ(text, "\"\\udb40\\udc41\"");
}

TEST(JsonWriter, IsValidUtf8WhateverTheTextHolds) {
    std::string text;
    appendJsonString(
        "a\xFF"
        "b",
        text);
    EXPECT_EQ(text, "\"a\uFFFDb\"");
}

TEST(JsonWriter, WritesNumbersThatJsonDoesNotKnowAsTexts) {
    EXPECT_EQ(written(OutputFormat::Json,
                      {{Cell{Cell::Kind::Boolean, "true"}, Cell{Cell::Kind::Number, "inf"}}}),
              "[\n{\"name\":true,\"size\":\"inf\"}\n]\n");
}

TEST(TextWriter, LinesUpColumns) {
    EXPECT_EQ(written(OutputFormat::Text, {cells("a", 12345), cells("写真", 7)}),
              "name   size\n"
              "a     12345\n"
              "写真      7\n");
}

TEST(TextWriter, KeepsEachRowOnItsLine) {
    EXPECT_EQ(written(OutputFormat::Text, {cells("a\nb\x1b", 1)}),
              "name      size\n"
              "a\\nb\\x1b     1\n");
}

TEST(TextWriter, GoesOnWithTheWidthsOfTheFirstRows) {
    std::vector<std::vector<Cell>> rows(TextWriter::rowsAhead, cells("a", 1));
    rows.push_back(cells("longer than any", 2));
    const std::string text = written(OutputFormat::Text, rows);
    EXPECT_TRUE(text.ends_with("\na        1\nlonger than any     2\n"))
        << text.substr(text.size() - 60);
}

TEST(TableWriter, FailsWhenTheStreamTakesNothing) {
    for (const OutputFormat format :
         {OutputFormat::Text, OutputFormat::Tsv, OutputFormat::Csv, OutputFormat::Json}) {
        std::ostringstream stream;
        stream.setstate(std::ios::badbit);
        const auto writer = makeTableWriter(format, stream, Audience::Program);
        EXPECT_THROW(
            {
                writer->begin(columns);
                writer->end();
            },
            base::FileFailure);
    }
}

}  // namespace
}  // namespace cli
