#include "shell/archive_tree.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>
#include <QTest>
#include <string>
#include <vector>

#include "base/failure.h"
#include "shell/pictures.h"

namespace shell {
namespace {

using Texts = std::vector<std::string>;

class ArchiveTreeTest : public testing::Test {
  protected:
    ArchiveTreeTest() {
        tree.setImageList(&images);
        tree.onNodeClick([this](const std::string& key) {
            clicked.push_back(key);
            if (atClick) {
                atClick(key);
            }
        });
        tree.resize(200, 300);
    }

    void addMedia(int count) {
        for (int id = 1; id <= count; ++id) {
            const std::string key = std::to_string(id) + ":";
            tree.addRootNode({key, key + " medium", "cdrom", ""});
        }
    }
    void addFolder(const std::string& path, const std::string& name) {
        tree.addChildNode(path, {path + "\\" + name, name, "folder", "folderopen"});
    }
    void show() {
        tree.show();
        tree.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&tree));
        tree.setFocus();
    }
    QPoint placeOf(const std::string& key) { return tree.visualItemRect(tree.node(key)).center(); }
    void mouseClick(const std::string& key) {
        QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, placeOf(key));
    }
    /// The picture of a node, as it is drawn now.
    QImage imageOf(const std::string& key) { return tree.node(key)->icon(0).pixmap(16).toImage(); }
    QImage image(const char* key) { return images.image(key).pixmap(16).toImage(); }

    ImageList images;
    ArchiveTree tree{nullptr};
    Texts clicked;
    std::function<void(const std::string&)> atClick;
};

TEST_F(ArchiveTreeTest, NodesStandBelowTheParentsOfTheirKeys) {
    addMedia(2);
    addFolder("1:", "photos");
    addFolder("1:\\photos", "2001");
    addFolder("2:", "photos");
    ASSERT_EQ(tree.topLevelItemCount(), 2);
    QTreeWidgetItem* one = tree.topLevelItem(0);
    EXPECT_EQ(one->text(0), "1: medium");
    EXPECT_EQ(one->child(0)->text(0), "photos");
    EXPECT_EQ(one->child(0)->child(0)->text(0), "2001");
    EXPECT_EQ(ArchiveTree::keyOf(one->child(0)->child(0)), "1:\\photos\\2001");
    EXPECT_EQ(tree.node("2:\\photos")->parent(), tree.topLevelItem(1));
    EXPECT_EQ(tree.node("3:"), nullptr);
}

TEST_F(ArchiveTreeTest, AKeyInUseAndAMissingParentAreRefusedAndAddNothing) {
    addMedia(1);
    addFolder("1:", "a");
    EXPECT_THROW(addMedia(1), base::InvalidArgumentFailure);
    EXPECT_THROW(addFolder("1:", "a"), base::InvalidArgumentFailure);
    EXPECT_THROW(addFolder("1:\\A", "b"), base::InvalidArgumentFailure);
    EXPECT_EQ(tree.topLevelItemCount(), 1);
    EXPECT_EQ(tree.topLevelItem(0)->childCount(), 1);
}

TEST_F(ArchiveTreeTest, KeysDifferByCaseAndByEveryCharacter) {
    addMedia(1);
    addFolder("1:", "a");
    addFolder("1:", "A");
    addFolder("1:", "a ");
    addFolder("1:", "");
    EXPECT_EQ(tree.topLevelItem(0)->childCount(), 4);
}

TEST_F(ArchiveTreeTest, ClearedItsKeysAreFree) {
    addMedia(3);
    addFolder("1:", "a");
    tree.clearNodes();
    EXPECT_EQ(tree.topLevelItemCount(), 0);
    EXPECT_EQ(tree.node("1:"), nullptr);
    addMedia(3);
    addFolder("1:", "a");
    EXPECT_EQ(tree.topLevelItemCount(), 3);
}

TEST_F(ArchiveTreeTest, ASelectedFolderIsOpenAndAMediumAsItWas) {
    addMedia(1);
    addFolder("1:", "a");
    EXPECT_EQ(imageOf("1:\\a"), image("folder"));
    tree.setCurrentItem(tree.node("1:\\a"));
    EXPECT_EQ(imageOf("1:\\a"), image("folderopen"));
    EXPECT_EQ(imageOf("1:"), image("cdrom"));
    tree.setCurrentItem(tree.node("1:"));
    EXPECT_EQ(imageOf("1:\\a"), image("folder"));
    EXPECT_EQ(imageOf("1:"), image("cdrom"));
}

TEST_F(ArchiveTreeTest, NamesAreShownAsTheyAre) {
    addMedia(1);
    addFolder("1:", "<b>&amp; \xC3\x86r\xC3\xB8</b>");
    const QTreeWidgetItem* node = tree.topLevelItem(0)->child(0);
    EXPECT_EQ(node->text(0), QString::fromUtf8("<b>&amp; \xC3\x86r\xC3\xB8</b>"));
    EXPECT_EQ(node->toolTip(0),
              QString::fromUtf8("<span>&lt;b&gt;&amp;amp; \xC3\x86r\xC3\xB8&lt;/b&gt;</span>"));
    EXPECT_FALSE(node->flags() & Qt::ItemIsEditable);
}

// The mouse

TEST_F(ArchiveTreeTest, EveryMouseClickOnANodeCounts) {
    addMedia(2);
    show();
    mouseClick("2:");
    mouseClick("1:");
    QTest::qWait(QApplication::doubleClickInterval() + 10);
    mouseClick("1:");
    EXPECT_EQ(clicked, (Texts{"2:", "1:", "1:"}));
}

TEST_F(ArchiveTreeTest, AClickBesideTheNodesIsNone) {
    addMedia(1);
    show();
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, QPoint(50, 280));
    EXPECT_EQ(clicked, Texts{});
}

TEST_F(ArchiveTreeTest, ExpandingIsNoClick) {
    addMedia(1);
    addFolder("1:", "a");
    show();
    const QRect row = tree.visualItemRect(tree.node("1:"));
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {},
                      QPoint(row.left() - tree.indentation() / 2, row.center().y()));
    EXPECT_TRUE(tree.node("1:")->isExpanded());
    EXPECT_EQ(clicked, Texts{});
}

TEST_F(ArchiveTreeTest, ANodeMayClearTheTreeWithItsOwnClick) {
    addMedia(3);
    show();
    atClick = [this](const std::string&) {
        tree.clearNodes();
        addMedia(1);
    };
    mouseClick("2:");
    EXPECT_EQ(tree.topLevelItemCount(), 1);
    mouseClick("1:");
    EXPECT_EQ(clicked, (Texts{"2:", "1:"}));
}

TEST_F(ArchiveTreeTest, ADoubleClickShowsTheFoldersThatItsClickReads) {
    addMedia(1);
    show();
    bool reading = false;
    atClick = [&](const std::string&) {
        if (reading) {
            return;
        }
        reading = true;
        // The second half comes while the first is still at work.
        QTest::mouseDClick(tree.viewport(), Qt::LeftButton, {}, placeOf("1:"));
        QTest::mouseRelease(tree.viewport(), Qt::LeftButton, {}, placeOf("1:"));
        addFolder("1:", "a");
    };
    mouseClick("1:");
    EXPECT_EQ(clicked, Texts{"1:"});
    EXPECT_TRUE(tree.node("1:")->isExpanded());
}

// The keys

TEST_F(ArchiveTreeTest, ATreeThatIsClearedForgetsTheKeys) {
    addMedia(2);
    show();
    tree.setCurrentItem(tree.node("1:"));
    QTest::keyClick(&tree, Qt::Key_Down);
    tree.clearNodes();
    addMedia(2);
    tree.showNode("1:");
    QTest::qWait(ArchiveTree::restOfKeys + 100);
    EXPECT_EQ(clicked, Texts{});
}

TEST_F(ArchiveTreeTest, AKeyThatIsHeldDownClicksOnce) {
    addMedia(2);
    show();
    tree.setCurrentItem(tree.node("2:"));
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return}) {
        clicked.clear();
        QTest::keyPress(&tree, key);
        for (int i = 0; i < 3; ++i) {
            QKeyEvent again(QEvent::KeyPress, key, {}, {}, true);
            QCoreApplication::sendEvent(&tree, &again);
        }
        EXPECT_EQ(clicked, Texts{"2:"});
    }
}

TEST_F(ArchiveTreeTest, EnterAndSpaceClickTheCurrentNodeAtOnce) {
    addMedia(2);
    show();
    tree.setCurrentItem(tree.node("2:"));
    QTest::keyClick(&tree, Qt::Key_Return);
    QTest::keyClick(&tree, Qt::Key_Enter);
    QTest::keyClick(&tree, Qt::Key_Space);
    EXPECT_EQ(clicked, (Texts{"2:", "2:", "2:"}));
}

TEST_F(ArchiveTreeTest, MovingClicksTheNodeWhereTheKeysRest) {
    addMedia(5);
    show();
    tree.setCurrentItem(tree.node("1:"));
    QTest::keyClick(&tree, Qt::Key_Down);
    QTest::keyClick(&tree, Qt::Key_Down);
    QTest::keyClick(&tree, Qt::Key_Down);
    EXPECT_EQ(clicked, Texts{});
    ASSERT_TRUE(QTest::qWaitFor([this] { return !clicked.empty(); }));
    QTest::qWait(2 * ArchiveTree::restOfKeys);
    EXPECT_EQ(clicked, Texts{"4:"});
}

TEST_F(ArchiveTreeTest, KeysThatMoveNowhereAreNoClick) {
    addMedia(1);
    show();
    tree.setCurrentItem(tree.node("1:"));
    QTest::keyClick(&tree, Qt::Key_Up);
    QTest::keyClick(&tree, Qt::Key_Down);
    QTest::qWait(2 * ArchiveTree::restOfKeys);
    EXPECT_EQ(clicked, Texts{});
}

TEST_F(ArchiveTreeTest, ANameThatIsTypedIsFoundAndClicked) {
    addMedia(5);
    show();
    tree.setCurrentItem(tree.node("1:"));
    QTest::keyClick(&tree, '3');
    ASSERT_TRUE(QTest::qWaitFor([this] { return !clicked.empty(); }));
    EXPECT_EQ(clicked, Texts{"3:"});
}

TEST_F(ArchiveTreeTest, KeysDuringAClickWaitForItsEnd) {
    addMedia(3);
    show();
    tree.setCurrentItem(tree.node("1:"));
    bool running = false;
    atClick = [&](const std::string& key) {
        EXPECT_FALSE(running);
        if (key == "1:") {
            running = true;
            QTest::keyClick(&tree, Qt::Key_Down);
            QTest::qWait(3 * ArchiveTree::restOfKeys);
            running = false;
        }
    };
    QTest::keyClick(&tree, Qt::Key_Return);
    EXPECT_EQ(clicked, Texts{"1:"});
    ASSERT_TRUE(QTest::qWaitFor([this] { return clicked.size() > 1; }));
    EXPECT_EQ(clicked, (Texts{"1:", "2:"}));
}

TEST_F(ArchiveTreeTest, AClearedTreeForgetsWhereTheKeysRested) {
    addMedia(3);
    show();
    tree.setCurrentItem(tree.node("1:"));
    QTest::keyClick(&tree, Qt::Key_Down);
    tree.clearNodes();
    QTest::qWait(2 * ArchiveTree::restOfKeys);
    EXPECT_EQ(clicked, Texts{});
    QTest::keyClick(&tree, Qt::Key_Return);
    EXPECT_EQ(clicked, Texts{});
}

// Sideways

TEST_F(ArchiveTreeTest, DeepFoldersAreReachedByScrolling) {
    addMedia(1);
    std::string path = "1:";
    for (int depth = 0; depth < 20; ++depth) {
        addFolder(path, "folder");
        path += "\\folder";
    }
    tree.expandAll();
    show();
    QTest::qWait(1);
    EXPECT_GT(tree.horizontalScrollBar()->maximum(), 0);
    tree.setCurrentItem(tree.node(path));
    const QRect row = tree.visualItemRect(tree.node(path));
    EXPECT_GE(row.left(), 0);
    EXPECT_LT(row.left(), tree.viewport()->width() - 30);
    const int place = tree.horizontalScrollBar()->value();
    mouseClick(path);
    EXPECT_EQ(tree.horizontalScrollBar()->value(), place);
    tree.setCurrentItem(tree.node("1:"));
    EXPECT_GE(tree.visualItemRect(tree.node("1:")).left(), 0);
}

TEST_F(ArchiveTreeTest, ShortTextsFillTheWidth) {
    addMedia(1);
    show();
    QTest::qWait(1);
    EXPECT_EQ(tree.header()->sectionSize(0), tree.viewport()->width());
    EXPECT_EQ(tree.horizontalScrollBar()->maximum(), 0);
}

TEST_F(ArchiveTreeTest, TenThousandFoldersAreThereAtOnce) {
    addMedia(1);
    tree.node("1:")->setExpanded(true);
    show();
    QElapsedTimer watch;
    watch.start();
    for (int i = 0; i < 100; ++i) {
        addFolder("1:", std::to_string(i));
        for (int j = 0; j < 99; ++j) {
            addFolder("1:\\" + std::to_string(i), std::to_string(j));
        }
    }
    QCoreApplication::processEvents();
    // A bound that only what grows with the square of the folders would break.
    EXPECT_LT(watch.elapsed(), 3000);
}

TEST_F(ArchiveTreeTest, SoAreAsManyMediaAsAnArchiveCanHave) {
    show();
    QElapsedTimer watch;
    watch.start();
    addMedia(INT16_MAX);
    QCoreApplication::processEvents();
    EXPECT_EQ(tree.topLevelItemCount(), INT16_MAX);
    EXPECT_LT(watch.elapsed(), 3000);
}

TEST_F(ArchiveTreeTest, SoAreTenThousandFoldersSideBySide) {
    addMedia(1);
    tree.node("1:")->setExpanded(true);
    show();
    QElapsedTimer watch;
    watch.start();
    for (int i = 0; i < 10000; ++i) {
        addFolder("1:", std::to_string(i));
    }
    QCoreApplication::processEvents();
    EXPECT_LT(watch.elapsed(), 3000);
}

}  // namespace
}  // namespace shell
