#include "shell/record_model.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QPersistentModelIndex>
#include <QSignalSpy>
#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "base/failure.h"
#include "base/text.h"

namespace shell {
namespace {

using Order = RecordModel::Order;

class RecordModelTest : public testing::Test {
  protected:
    std::vector<std::string> column(int number) const {
        std::vector<std::string> texts;
        for (int position = 1; position <= model.rowCount(); ++position) {
            texts.push_back(model.text(position, number));
        }
        return texts;
    }
    void fill(std::initializer_list<const char*> names) {
        for (const char* name : names) {
            model.appendRow({name});
        }
    }

    RecordModel model;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

using Texts = std::vector<std::string>;

TEST_F(RecordModelTest, RowsStayInTheOrderInWhichTheyWereAdded) {
    fill({"b", "a", "c"});
    EXPECT_EQ(column(1), (Texts{"b", "a", "c"}));
    EXPECT_FALSE(model.isSorted());
}

TEST_F(RecordModelTest, ColumnsInsertedInFrontMoveNoText) {
    model.insertColumnAt(1, "Old");
    model.appendRow({"text", "sub-item"});
    model.insertColumnAt(1, "New");
    EXPECT_EQ(model.columnCount(), 2);
    EXPECT_EQ(model.headerData(0, Qt::Horizontal, Qt::DisplayRole).toString(), "New");
    EXPECT_EQ(model.headerData(1, Qt::Horizontal, Qt::DisplayRole).toString(), "Old");
    EXPECT_EQ(model.index(0, 0).data().toString(), "text");
    EXPECT_EQ(model.index(0, 1).data().toString(), "sub-item");
}

TEST_F(RecordModelTest, AMissingSubItemIsAnEmptyCell) {
    model.insertColumnAt(1, "Name");
    model.insertColumnAt(2, "Notes");
    model.appendRow({"name"});
    EXPECT_EQ(model.index(0, 1).data().toString(), "");
    model.setText(1, 2, "note");
    EXPECT_EQ(model.index(0, 1).data().toString(), "note");
}

TEST_F(RecordModelTest, TextsAreSortedByTheirCharacters) {
    fill({"9", "10", "100", "2"});
    model.setSorted(0, Order::Ascending);
    EXPECT_EQ(column(1), (Texts{"10", "100", "2", "9"}));
    model.setSorted(0, Order::Descending);
    EXPECT_EQ(column(1), (Texts{"9", "2", "100", "10"}));
}

TEST_F(RecordModelTest, CaseIsIgnored) {
    fill({"b", "A", "a", "B", "Ä", "ä"});
    model.setSorted(0, Order::Ascending);
    EXPECT_EQ(column(1), (Texts{"A", "a", "b", "B", "Ä", "ä"}));
}

TEST_F(RecordModelTest, OnceSortedRowsAddedLaterGoToTheirPlaces) {
    fill({"b", "d"});
    model.setSorted(0, Order::Descending);
    fill({"c", "e", "a", "D"});
    EXPECT_EQ(column(1), (Texts{"e", "d", "D", "c", "b", "a"}));
    model.removeAllRows();
    fill({"x", "z"});
    EXPECT_EQ(column(1), (Texts{"z", "x"}));
}

TEST_F(RecordModelTest, ManyRowsAtOnceAreAsRowsOneByOne) {
    std::mt19937 random(7);
    for (const Order order : {Order::Ascending, Order::Descending}) {
        RecordModel single;
        RecordModel many;
        single.setSorted(1, order);
        many.setSorted(1, order);
        for (int batch = 0; batch < 5; ++batch) {
            std::vector<RecordModel::Row> rows;
            for (int i = 0; i < 40; ++i) {
                rows.push_back({std::to_string(batch * 100 + i), std::to_string(random() % 20)});
            }
            for (const RecordModel::Row& row : rows) {
                single.appendRow(row);
            }
            many.appendRows(rows);
        }
        for (int position = 1; position <= single.rowCount(); ++position) {
            ASSERT_EQ(single.text(position, 1), many.text(position, 1)) << position;
        }
    }
}

TEST_F(RecordModelTest, WhatPointsToARowGoesWithItWhenTheListIsSorted) {
    model.insertColumnAt(1, "Name");
    fill({"b", "a", "c"});
    const QPersistentModelIndex b(model.index(0, 0));
    model.setSorted(0, Order::Ascending);
    EXPECT_EQ(b.row(), 1);
    EXPECT_EQ(b.data().toString(), "b");
    fill({"aa"});
    EXPECT_EQ(b.row(), 2);
}

TEST_F(RecordModelTest, ToolTipsShowTheTextAsItIs) {
    model.insertColumnAt(1, "Name");
    fill({"<b>bold</b>"});
    EXPECT_EQ(model.index(0, 0).data(Qt::ToolTipRole).toString(),
              "<span>&lt;b&gt;bold&lt;/b&gt;</span>");
}

TEST_F(RecordModelTest, RowsHaveNoPicture) {
    model.insertColumnAt(1, "Name");
    fill({"a"});
    EXPECT_FALSE(model.index(0, 0).data(Qt::DecorationRole).isValid());
}

TEST_F(RecordModelTest, AHeadingThatIsCutIsToldByItsToolTip) {
    model.insertColumnAt(1, "<b>Date Modified");
    EXPECT_EQ(model.headerData(0, Qt::Horizontal, Qt::ToolTipRole).toString(),
              "<span>&lt;b&gt;Date Modified</span>");
}

TEST_F(RecordModelTest, PlacesThatAreNotThereAreFailures) {
    EXPECT_THROW(model.insertColumnAt(2, "x"), base::SubscriptFailure);
    EXPECT_THROW(model.insertColumnAt(0, "x"), base::SubscriptFailure);
    EXPECT_THROW((void)model.text(1, 1), base::SubscriptFailure);
    EXPECT_THROW(model.setText(0, 1, "x"), base::SubscriptFailure);
}

TEST(RecordModel, SeveralTextsOfARowAreReplacedAtOnce) {
    RecordModel model;
    for (int column = 1; column <= 10; ++column) {
        model.insertColumnAt(column, QString::number(column));
    }
    model.appendRow({"a", "1"});
    model.appendRow({"b", "2"});
    const QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);
    model.setTexts(2, 5, {"keywords", "note 1", "note 2"});
    EXPECT_EQ(model.text(2, 1), "b");
    EXPECT_EQ(model.text(2, 4), "");
    EXPECT_EQ(model.text(2, 5), "keywords");
    EXPECT_EQ(model.text(2, 7), "note 2");
    EXPECT_EQ(model.text(1, 5), "");
    ASSERT_EQ(changes.size(), 1);
    EXPECT_EQ(changes[0][0].toModelIndex().row(), 1);
    EXPECT_THROW(model.setTexts(3, 5, {"x"}), base::SubscriptFailure);
}

TEST(RecordModel, TextsAreKeptForColumnsThatAreNotThereYet) {
    RecordModel model;
    model.appendRow({"a"});
    model.setTexts(1, 5, {"x"});
    EXPECT_EQ(model.text(1, 5), "x");
}

}  // namespace
}  // namespace shell
