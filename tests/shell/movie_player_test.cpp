#include "shell/movie_player.h"

#include <gtest/gtest.h>

#include <QTest>

#include "tests/shell/fake_movies.h"

namespace shell {
namespace {

TEST(MoviePlayer, PlaysOnlyWhileItCanBeSeen) {
    support::FakeMovies movies;
    MoviePlayer player(movies, nullptr);
    player.setMovie("/m.swf");
    QTest::qWait(5);
    EXPECT_TRUE(movies.opened.empty());
    player.show();
    EXPECT_TRUE(QTest::qWaitFor([&] { return player.framesShown() > 0; }));
    player.hide();
    const int shown = player.framesShown();
    QTest::qWait(10);
    EXPECT_EQ(player.framesShown(), shown);
    EXPECT_FALSE(player.isPlaying());
}

TEST(MoviePlayer, BeginsAgainAtTheEnd) {
    support::FakeMovies movies;
    MoviePlayer player(movies, nullptr);
    player.setMovie("/m.swf");
    player.show();
    EXPECT_TRUE(QTest::qWaitFor([&] { return player.framesShown() > 7; }));
    EXPECT_GE(movies.opened.size(), 3U);
}

TEST(MoviePlayer, WithoutAMovieTheAreaIsEmptyAndNothingIsTriedAgain) {
    support::FakeMovies movies;
    movies.playable = false;
    MoviePlayer player(movies, nullptr);
    player.setMovie("/m.swf");
    player.resize(40, 40);
    player.show();
    QTest::qWait(20);
    EXPECT_EQ(movies.opened.size(), 1U);
    EXPECT_FALSE(player.isPlaying());
    const QImage seen = player.grab().toImage();
    EXPECT_EQ(seen.pixelColor(20, 20), player.palette().color(QPalette::Window));
}

TEST(MoviePlayer, AMovieWithoutPicturesIsAnEmptyArea) {
    support::FakeMovies movies;
    movies.pictures = 0;
    MoviePlayer player(movies, nullptr);
    player.setMovie("/m.swf");
    player.show();
    QTest::qWait(20);
    EXPECT_EQ(movies.opened.size(), 1U);
    EXPECT_FALSE(player.isPlaying());
}

TEST(MoviePlayer, ShowsTheWholePictureInItsProportions) {
    support::FakeMovies movies;
    MoviePlayer player(movies, nullptr);
    player.setMovie("/m.swf");
    player.resize(80, 80);  // the picture is twice as wide as it is high
    player.show();
    ASSERT_TRUE(QTest::qWaitFor([&] { return player.framesShown() > 0; }));
    const QImage seen = player.grab().toImage();
    EXPECT_EQ(seen.pixelColor(40, 40), QColor(Qt::red));
    EXPECT_EQ(seen.pixelColor(40, 10), player.palette().color(QPalette::Window));
    EXPECT_EQ(seen.pixelColor(2, 40), QColor(Qt::red));
}

TEST(MoviePlayer, AnotherMovieBeginsAtOnce) {
    support::FakeMovies movies;
    MoviePlayer player(movies, nullptr);
    player.setMovie("/a.swf");
    player.show();
    ASSERT_TRUE(QTest::qWaitFor([&] { return player.framesShown() > 0; }));
    player.setMovie("/b.swf");
    EXPECT_TRUE(QTest::qWaitFor([&] { return movies.opened.back() == "/b.swf"; }));
}

}  // namespace
}  // namespace shell
