#include "kelvaris/system/bad_expected_access.h"
#include "kelvaris/system/io/mime_type.h"
#include "models/bundle_structure_model.h"
#include "models/example_bundle_content_model.h"
#include "models/example_bundle_properties_model.h"
#include "models/examples_bundle_content_model.h"
#include "models/item_roles.h"
#include "models/opc_package_model.h"
#include "tests/models/package_fixtures.h"
#include "tests/models/raw_package.h"
#include "tests/support/model_rules.h"
#include "tests/support/random_steps.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QPersistentModelIndex>
#include <QtTest/QAbstractItemModelTester>
#include <QtWidgets/QTreeView>

#include <gtest/gtest.h>

// The models, used in a random order below a view, with Qt's tester attached where the signals that are required let
// it.

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;
using namespace Kelvaris::System::IO::Bundle;
using namespace Kelvaris::System::IO::OpcPackaging;

namespace {

constexpr int stepsOfRandomUse = 200;
constexpr auto fatally = QAbstractItemModelTester::FailureReportingMode::Fatal;

/// Names of files and directories, some of which are one part or collide as parts do.
const std::vector<QString>& namesInUse()
{
    static const std::vector<QString> names{
        QStringLiteral("a.txt"),  QStringLiteral("A.TXT"), QStringLiteral("b c.txt"), QStringLiteral("50%.txt"),
        QStringLiteral("ü.txt"),  QStringLiteral("sub"),   QStringLiteral("deep"),    QStringLiteral("電路"),
        QStringLiteral("SUB"),    QStringLiteral("😀"),     QStringLiteral("a%2Fb"),   QString{120, QLatin1Char{'n'}},
        QStringLiteral("#?&+.x"), QStringLiteral("مضخم"),  QStringLiteral("content")};
    return names;
}

/// What is typed into a property's cell; some of it is no date, some no Unicode.
const std::vector<QString>& valuesInUse()
{
    static const std::vector<QString> values{{},
                                             QStringLiteral("text"),
                                             QStringLiteral("2024-02-30"),
                                             QStringLiteral("2024-02-29T12:00:00Z"),
                                             QStringLiteral("; ; a;b"),
                                             QStringLiteral("<&>\"'"),
                                             QString{QChar{0}},
                                             QString{QChar{0xD800}},
                                             QString{5'000, QLatin1Char{'v'}}};
    return values;
}

/// Rows that are held across a change: those that are still there show what they showed.
class HeldRows
{
public:
    explicit HeldRows(const QAbstractItemModel& model)
    {
        for (const QModelIndex& row : everyRow(model))
            m_rows.emplace_back(row, row.data().toString());
    }

    void expectUnchanged() const
    {
        for (const auto& [row, text] : m_rows) {
            if (row.isValid()) {
                EXPECT_EQ(row.data().toString(), text);
            }
        }
    }

private:
    std::vector<std::pair<QPersistentModelIndex, QString>> m_rows;
};

class RandomUse : public testing::TestWithParam<unsigned>
{
protected:
    /// Opens and closes what a view shows, and lets it paint.
    void mayLook(QAbstractItemModel& model)
    {
        view.setModel(&model);
        view.show();
        steps.may("expand", [this] { view.expandAll(); });
        steps.may("collapse", [this] { view.collapseAll(); });
        steps.may("paint", [this] {
            QCoreApplication::processEvents();
            EXPECT_FALSE(view.grab().isNull());
        });
    }

    QModelIndex anyRow(const QAbstractItemModel& model)
    {
        const auto rows = everyRow(model);
        return rows.empty() ? QModelIndex{} : steps.oneOf(rows);
    }

    FilePath2 anyFile() { return toPath(folder.write(steps.oneOf(namesInUse()).toStdString(), "bytes")); }

    std::shared_ptr<ExampleBundle> anyBundle()
    {
        static const std::vector<PartNames> contents{
            {},
            {L"/content/a.txt"},
            {L"/content/sub/a.txt", L"/content/b.txt", L"/content/sub/deep/c.txt"},
            {L"/elsewhere/a.txt", L"/content/50%25.txt", L"/z.txt"}};
        return exampleBundle(steps.oneOf(contents));
    }

    std::shared_ptr<OpcPackage> anyPackage()
    {
        const auto bundle = anyBundle();
        return {bundle, &bundle->package()};
    }

    template <class Bundle>
    std::shared_ptr<Bundle> reopened(Bundle& bundle)
    {
        const FilePath2 file = toPath(folder / "saved.kvbdl.zip");
        bundle.writeToFile(file).value();
        return std::make_shared<Bundle>(Bundle::open(file).value());
    }

    /// Cells of `model`, set to anything. What is no value throws, and all stays well.
    void mayEdit(QAbstractItemModel& model)
    {
        steps.may("edit", [this, &model] {
            const QModelIndex row = anyRow(model);
            const QModelIndex cell = row.sibling(row.row(), steps.below(2));
            try {
                model.setData(cell, steps.oneOf(valuesInUse()));
            } catch (const bad_expected_access<ErrorCode2>&) {
            }
        });
    }

    RandomSteps steps{GetParam()};
    TemporaryFolder folder;
    QTreeView view;
};

INSTANTIATE_TEST_SUITE_P(Seeds, RandomUse, testing::Range(1U, 4U));

bool hasDirectory(const QAbstractItemModel& model, const QModelIndex& parent, const QString& name)
{
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex index = model.index(row, 0, parent);
        if (index.data(ItemRoles::itemType) == ItemTypes::directory && index.data().toString() == name)
            return true;
    }
    return false;
}

} // namespace

// Two signals that are required stop Qt's tester, so that nobody does these two things here: a directory that is there
// already announces a row that does not come, and a file without a name an insertion that does not end.
TEST_P(RandomUse, TheContentOfABundleKeepsTheRulesOfAModel)
{
    ExampleBundleContentModel model;
    const QAbstractItemModelTester tester{&model, fatally};
    mayLook(model);
    steps.may("show", [&] { model.setBundle(anyBundle()); });
    steps.may("reload", [&] {
        if (model.bundle() != nullptr)
            model.setBundle(reopened(*model.bundle()));
    });
    for (int often = 0; often < 4; ++often) {
        steps.may("add-directory", [&] {
            const HeldRows held{model};
            const QModelIndex parent = anyRow(model);
            const QString& name = steps.oneOf(namesInUse());
            if (!hasDirectory(model, parent, name))
                model.addDirectory(name, parent);
            held.expectUnchanged();
        });
        steps.may("add-file", [&] {
            const HeldRows held{model};
            if (model.bundle() != nullptr)
                (void)model.addFile(anyFile(), anyRow(model));
            held.expectUnchanged();
        });
    }
    steps.may("mark", [&] {
        if (model.bundle() != nullptr)
            model.setPrimaryFile(anyRow(model).data(ItemRoles::path).toString());
    });
    steps.take(stepsOfRandomUse, [&] { expectTree(model); });
}

TEST_P(RandomUse, ThePropertiesOfABundleKeepTheRulesOfAModel)
{
    ExampleBundlePropertiesModel model;
    const QAbstractItemModelTester tester{&model, fatally};
    auto bundle = anyBundle();
    model.setBundle(bundle);
    mayLook(model);
    mayEdit(model);
    steps.may("update", [&] { model.updateProperties(); });
    steps.may("show", [&] { model.setBundle(bundle = anyBundle()); });
    steps.may("reload", [&] { model.setBundle(bundle = reopened(*bundle)); });
    steps.take(stepsOfRandomUse, [&] { expectTree(model); });
}

TEST_P(RandomUse, ABarrelKeepsTheRulesOfAModel)
{
    const FilePath2 one =
        writeExample(folder, "one.zip", QStringLiteral("one"), {L"/content/a.txt", L"/content/d/b.txt"});
    const FilePath2 two = writeExample(folder, "two.zip", {}, {L"/elsewhere/a.txt"});
    ExamplesBundleContentModel model;
    const QAbstractItemModelTester tester{&model, fatally};
    mayLook(model);
    mayEdit(model);
    steps.may("empty", [&] { model.setBundle(barrelOf({})); });
    steps.may("one", [&] { model.setBundle(barrelOf({one})); });
    steps.may("three", [&] { model.setBundle(barrelOf({two, one, two})); });
    steps.take(stepsOfRandomUse, [&] { expectTree(model); });
}

// Qt's tester stops where a folder has its rows below each of its columns, so that it looks at flat packages.
TEST_P(RandomUse, TheStructureOfABundleKeepsTheRulesOfAModel)
{
    steps.may("flat", [&] {
        BundleStructureModel model{open_package(RawPackage{}.part("/a.txt").part("/b.txt").write(folder)).value(),
                                   nullptr};
        const QAbstractItemModelTester tester{&model, fatally};
        expectTree(model);
    });
    steps.may("deep", [&] {
        BundleStructureModel model{*anyBundle(), nullptr};
        view.setModel(&model);
        view.expandAll();
        EXPECT_FALSE(view.grab().isNull());
        expectTree(model);
    });
    steps.take(20, [] {});
}

TEST_P(RandomUse, APackageKeepsTheRulesOfAModelAsLongAsNoFileIsAdded)
{
    OpcPackageModel model{anyPackage(), nullptr};
    const QAbstractItemModelTester tester{&model, fatally};
    mayLook(model);
    steps.may("show", [&] { model.setPackage(anyPackage()); });
    steps.may("none", [&] { model.setPackage(nullptr); });
    for (int often = 0; often < 4; ++often) {
        steps.may("add-directory", [&] {
            const HeldRows held{model};
            (void)model.addDirectory(steps.oneOf(namesInUse()), anyRow(model));
            held.expectUnchanged();
        });
    }
    steps.take(stepsOfRandomUse, [&] { expectTree(model); });
}

// A file's row is announced behind the directories and stands ahead of them, or there is none: Qt's tester stops at
// that, and rows that are held move. The tree is right all the same, and a view goes on.
TEST_P(RandomUse, APackageThatFilesAreAddedToIsATreeAllTheTime)
{
    OpcPackageModel model{anyPackage(), nullptr};
    mayLook(model);
    steps.may("show", [&] { model.setPackage(anyPackage()); });
    for (int often = 0; often < 4; ++often) {
        steps.may("add-directory", [&] { (void)model.addDirectory(steps.oneOf(namesInUse()), anyRow(model)); });
        steps.may("add-file", [&] {
            (void)model.addFile(anyFile(), anyRow(model), MIMEType{FileType::text}, model.partsIndex(), u8"urn:test",
                                OpcPackageCompressionType::none);
        });
    }
    steps.take(stepsOfRandomUse, [&] { expectTree(model); });
}
