#include "browsers/pattern_matcher.h"
#include "fuzz/fuzzing.h"

#include <QtCore/QLoggingCategory>
#include <QtCore/QStringList>

#include <ctime>

namespace {

/// The titles of a list, among them those at which a hostile pattern takes longest.
const QStringList& titles()
{
    static const QStringList list = [] {
        QStringList some{QString{},
                         QStringLiteral("RC low-pass"),
                         QStringLiteral("Verst\u00e4rker"),
                         QStringLiteral("\u202e\u05d0\u0301"),
                         QString(40, QLatin1Char{'a'}) + QLatin1Char{'!'},
                         QString(2000, QLatin1Char{'a'}),
                         QString(10000, QLatin1Char{'x'})};
        for (int i = 0; i < 200; ++i)
            some << QStringLiteral("example number %1").arg(i);
        return some;
    }();
    return list;
}

double processorSeconds()
{
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // an invalid pattern writes one line; a run writes millions
    QLoggingCategory::setFilterRules(QStringLiteral("*=false"));
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<int>(size));
    PatternMatcher matcher;
    matcher.setPattern(searchPattern(text));
    const double start = processorSeconds();
    int found = 0;
    for (const QString& title : titles())
        found += matcher.isFoundIn(title) ? 1 : 0;
    Fuzzing::require(!text.isEmpty() || found == titles().size(), "the empty pattern is found everywhere");
    // under the sanitizers all is slower; the promise is that a pass ends
    Fuzzing::require(processorSeconds() - start < 5, "no pattern holds the window up");
    return 0;
}
