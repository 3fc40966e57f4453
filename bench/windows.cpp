// What no function of the plug-in is for itself: models, windows and packages in the process. Data from bench_data
// stands in the directory that HOLLERWICK_BENCH_DATA names. Windows need no display.

#include "bench/walker.h"
#include "browsers/example_browser2.h"
#include "browsers/example_browser2_example_model.h"
#include "editors/package_viewers.h"
#include "kelvaris/system/io/bundle/content_bundle.h"
#include "kelvaris/system/qt/path_bridge.h"

#include <QtCore/QElapsedTimer>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListView>
#include <QtWidgets/QTreeView>

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <algorithm>
#include <ctime>
#include <string>
#include <vector>

namespace {

using namespace Kelvaris::System;
using IO::Bundle::ContentBundle;
using IO::OpcPackaging::OpcPackage;
using Model = ExampleBrowser2ExampleModel;

QString dataFile(const QString& name)
{
    return qEnvironmentVariable("HOLLERWICK_BENCH_DATA") + QLatin1Char{'/'} + name;
}

QString barrelOf(std::int64_t examples)
{
    return dataFile(QStringLiteral("barrel-%1.kvexs").arg(examples));
}

/// Sees the paint events of one widget.
class PaintWatch : public QObject
{
public:
    explicit PaintWatch(QWidget* widget) : m_widget{*widget} { widget->installEventFilter(this); }

    /// Handles everything that is left to do. A widget that had no reason to be painted is painted all the same.
    void waitForPaint()
    {
        // the layout of a view waits for one turn of the loop, and its paint event for the next
        for (int turn = 0; turn < 3; ++turn)
            QCoreApplication::processEvents();
        if (!m_isPainted)
            m_widget.repaint();
        m_isPainted = false;
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        m_isPainted = m_isPainted || event->type() == QEvent::Paint;
        return QObject::eventFilter(watched, event);
    }

private:
    QWidget& m_widget;
    bool m_isPainted = false;
};

void addBarrel(benchmark::State& state, const QString& path)
{
    const std::vector<FilePath2> files{toFilePath2(path)};
    for (auto each : state) {
        Model model;
        model.addBarrels(files);
        if (model.rowCount() != state.range(0))
            state.SkipWithError("examples are missing");
    }
    state.counters["us_per_example"] =
        benchmark::Counter(static_cast<double>(state.iterations() * state.range(0)) * 1e-6,
                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void addBarrels(benchmark::State& state)
{
    addBarrel(state, barrelOf(state.range(0)));
}

void addBarrelOfNames(benchmark::State& state)
{
    addBarrel(state, dataFile(QStringLiteral("barrel-of-names.kvexs")));
}

std::size_t textBytes(const Model& model)
{
    std::size_t characters = 0;
    for (int row = 0; row < model.rowCount(); ++row) {
        for (const int role : {Model::TitleRole, Model::DescriptionRole, Model::ManufacturerRole, Model::PartUriRole})
            characters += static_cast<std::size_t>(model.index(row, 0).data(role).toString().size());
        for (const QString& keyword : model.index(row, 0).data(Model::KeywordsRole).toStringList())
            characters += static_cast<std::size_t>(keyword.size());
    }
    return characters * sizeof(QChar);
}

void memoryOfExamples(benchmark::State& state)
{
    const std::vector<FilePath2> files{toFilePath2(barrelOf(state.range(0)))};
    double bytes = 0;
    for (auto each : state) {
        const auto before = mallinfo2();
        Model model;
        model.addBarrels(files);
        const auto after = mallinfo2();
        const auto used = after.uordblks + after.hblkhd - before.uordblks - before.hblkhd;
        bytes = static_cast<double>(used - textBytes(model)) / static_cast<double>(state.range(0));
    }
    state.counters["bytes_above_texts"] = bytes;
}

void walkByHand(benchmark::State& state)
{
    const std::string path = barrelOf(state.range(0)).toStdString();
    for (auto each : state) {
        if (Bench::walkBarrel(path) != static_cast<std::size_t>(state.range(0)))
            state.SkipWithError("examples are missing");
    }
}

void typeKey(QLineEdit& box, int key, const QString& text)
{
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event{type, key, Qt::NoModifier, text};
        QCoreApplication::sendEvent(&box, &event);
    }
}

double processorSeconds()
{
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

double percentile95(std::vector<double> values)
{
    std::ranges::sort(values);
    return values[values.size() * 95 / 100];
}

/// Types a word and takes it back, key by key. Each time ends when the view has been painted.
void searchKey(benchmark::State& state)
{
    ExampleBrowser2 browser;
    browser.addBarrels({toFilePath2(barrelOf(state.range(0)))});
    auto& view = *browser.findChild<QListView*>(QStringLiteral("examplesView"));
    auto& box = *browser.findChild<QLineEdit*>(QStringLiteral("searchBox"));
    PaintWatch watch{view.viewport()};
    browser.show();
    watch.waitForPaint();
    const QString word = QStringLiteral("filter 12");
    std::vector<double> times;
    std::vector<double> processorTimes;
    for (auto each : state) {
        const auto place = static_cast<int>(times.size()) % (2 * word.size());
        QElapsedTimer timer;
        timer.start();
        const double begin = processorSeconds();
        if (place < word.size())
            typeKey(box, 0, word.mid(place, 1));
        else
            typeKey(box, Qt::Key_Backspace, {});
        watch.waitForPaint();
        times.push_back(static_cast<double>(timer.nsecsElapsed()) * 1e-9);
        processorTimes.push_back(processorSeconds() - begin);
        state.SetIterationTime(times.back());
        const int rows = view.model()->rowCount();
        const bool isWhole = rows == state.range(0);
        if (rows == 0 || isWhole != (place == 2 * word.size() - 1))
            state.SkipWithError("the search found the wrong rows");
    }
    state.counters["p95_ms"] = percentile95(times) * 1e3;
    state.counters["p95_cpu_ms"] = percentile95(processorTimes) * 1e3;
    state.counters["rows_left"] = view.model()->rowCount();
}

void openBrowser(benchmark::State& state)
{
    for (auto each : state) {
        ExampleBrowser2 browser;
        browser.addBarrels({toFilePath2(barrelOf(state.range(0)))});
        const auto& view = *browser.findChild<QListView*>(QStringLiteral("examplesView"));
        PaintWatch watch{view.viewport()};
        browser.show();
        watch.waitForPaint();
        if (view.model()->rowCount() != state.range(0))
            state.SkipWithError("examples are missing");
    }
}

void openViewer(benchmark::State& state)
{
    const FilePath2 path = toFilePath2(dataFile(QStringLiteral("parts-%1.zip").arg(state.range(0))));
    for (auto each : state) {
        openBundleViewer(path);
        const auto windows = QApplication::topLevelWidgets();
        const auto window = std::ranges::find_if(windows, [](QWidget* widget) { return widget->isVisible(); });
        auto* const view = qobject_cast<QTreeView*>(*window);
        PaintWatch watch{view->viewport()};
        watch.waitForPaint();
        if (!view->model()->hasChildren())
            state.SkipWithError("parts are missing");
        delete view;
    }
}

void openAndClose(benchmark::State& state)
{
    const FilePath2 path = toFilePath2(dataFile(QStringLiteral("parts-60000.zip")));
    for (auto each : state)
        benchmark::DoNotOptimize(IO::OpcPackaging::open_package(path).value());
    const OpcPackage package = IO::OpcPackaging::open_package(path).value();
    std::size_t parts = 0;
    const auto all = package.parts().value();
    for (auto it = all.begin(); it != decltype(it)::Sentinel{}; ++it)
        ++parts;
    if (parts < 60'000)
        state.SkipWithError("parts are missing");
}

/// Saves a bundle of a gigabyte with another title.
void saveGigabyte(benchmark::State& state)
{
    const FilePath2 source = toFilePath2(dataFile(QStringLiteral("gigabyte.zip")));
    const FilePath2 target = toFilePath2(qEnvironmentVariable("HOLLERWICK_BENCH_OUTPUT"));
    for (auto each : state) {
        ContentBundle bundle = ContentBundle::open(source).value();
        bundle.setTitle(u8"after").value();
        bundle.writeToFile(target).value();
    }
}

} // namespace

BENCHMARK(addBarrels)->Arg(200)->Arg(10'000)->Arg(50'000)->Unit(benchmark::kMillisecond);
BENCHMARK(addBarrelOfNames)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(memoryOfExamples)->Arg(10'000)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(walkByHand)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(searchKey)->Arg(10'000)->Arg(50'000)->Iterations(90)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(openBrowser)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(openViewer)->Arg(15'000)->Arg(60'000)->Iterations(5)->Unit(benchmark::kMillisecond);
BENCHMARK(openAndClose)->Unit(benchmark::kMillisecond);
BENCHMARK(saveGigabyte)->Iterations(1)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application{argc, argv};
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
