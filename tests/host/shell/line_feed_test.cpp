#include "host/shell/line_feed.h"

#include <QtTest/QTest>

#include <gtest/gtest.h>

#include <thread>

using HostShell::LineFeed;

TEST(LineFeed, ShowsLinesOfItsOwnThreadAtOnce)
{
    QStringList shown;
    LineFeed feed{[&](const QStringList& lines) { shown += lines; }};
    feed.add(QStringLiteral("a"));
    EXPECT_EQ(shown, QStringList{QStringLiteral("a")});
}

TEST(LineFeed, CarriesManyLinesOfAnotherThreadInOrder)
{
    constexpr int many = 50'000;
    QStringList shown;
    LineFeed feed{[&](const QStringList& lines) { shown += lines; }};
    std::thread other{[&] {
        for (int i = 0; i < many; ++i)
            feed.add(QString::number(i));
    }};
    EXPECT_TRUE(QTest::qWaitFor([&] { return shown.size() == many; }, 60'000));
    other.join();
    for (int i = 0; i < many; ++i)
        ASSERT_EQ(shown.at(i), QString::number(i));
}

TEST(LineFeed, LetsNobodyWaitOnceItIsClosed)
{
    LineFeed feed{[](const QStringList&) {}};
    std::thread other{[&] {
        for (int i = 0; i < 50'000; ++i)
            feed.add(QString::number(i));
    }};
    feed.close();
    other.join();
}
