#include "models/example_bundle_content_model.h"

#include "kelvaris/system/bad_expected_access.h"
#include "models/item_roles.h"
#include "tests/models/package_fixtures.h"
#include "tests/models/signal_log.h"
#include "tests/support/model_dump.h"

#include <QtTest/QAbstractItemModelTester>

#include <gtest/gtest.h>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO::Bundle;
using namespace Kelvaris::System::IO::OpcPackaging;

namespace {

const DumpedCells marks{{0}, {Qt::DisplayRole, Qt::DecorationRole}};

constexpr const char8_t* primaryFileType =
    u8"http://schemas.kelvaris.example/package/2025/relationships/example-bundle/primary-file";

void relateToMissingPart(ExampleBundle& bundle, const char8_t* type)
{
    (void)bundle.package()
        .createRelationship(OpcPackagePartUri{L"/missing.txt"}, OpcTargetMode::internal, type)
        .value();
}

class ExampleBundleContentModelTest : public testing::Test
{
protected:
    void show(const PartNames& names) { model.setBundle(exampleBundle(names)); }

    std::string primaryFileOfTheBundle() const
    {
        const FilePath2 path = model.bundle()
                                   ->primaryFileRelationship()
                                   .value()
                                   .targetUri()
                                   .value()
                                   .toLocalFile(UrlLocalFileOptions::relativePath)
                                   .value();
        return QString::fromWCharArray(path.c_str()).toStdString();
    }

    ExampleBundleContentModel model;
};

} // namespace

TEST_F(ExampleBundleContentModelTest, WithoutAPrimaryFileNoRowHasAMark)
{
    EXPECT_FALSE(model.hasPrimaryFile());
    show({L"/content/a.txt", L"/b.txt"});
    EXPECT_FALSE(model.hasPrimaryFile());
    EXPECT_EQ(dump(model, {}, marks), "b.txt | -\ncontent | -\n  a.txt | -\n");
    EXPECT_FALSE(model.data({}, Qt::DecorationRole).isValid());
}

TEST_F(ExampleBundleContentModelTest, ThePrimaryFileOfTheBundleHasARedMark)
{
    const auto bundle = exampleBundle({L"content/a b.txt", L"content/ü %.txt"});
    bundle->setPrimaryFile(OpcPackagePartUri{L"content/ü %.txt"}).value();
    model.setBundle(bundle);
    EXPECT_TRUE(model.hasPrimaryFile());
    EXPECT_EQ(rowNamed(model, QStringLiteral("ü %.txt")).data(Qt::DecorationRole).userType(), int{QMetaType::QIcon});
    EXPECT_EQ(dump(model, {}, marks), "content | -\n  a b.txt | -\n  ü %.txt | #ff0000\n");
}

TEST_F(ExampleBundleContentModelTest, TheMarkIsASquareOf100Pixels)
{
    show({L"/content/a.txt"});
    model.setPrimaryFile(QStringLiteral("content/a.txt"));
    const auto mark = rowNamed(model, QStringLiteral("a.txt")).data(Qt::DecorationRole).value<QIcon>();
    EXPECT_EQ(mark.availableSizes(), QList<QSize>{QSize(100, 100)});
}

TEST_F(ExampleBundleContentModelTest, OtherRolesAreThoseOfTheContent)
{
    show({L"/content/a.txt"});
    const QModelIndex row = rowNamed(model, QStringLiteral("a.txt"));
    EXPECT_EQ(row.data(ItemRoles::path).toString(), QStringLiteral("content/a.txt"));
    EXPECT_EQ(row.data(ItemRoles::itemType).toInt(), ItemTypes::part);
    EXPECT_FALSE(row.data(Qt::ToolTipRole).isValid());
}

TEST_F(ExampleBundleContentModelTest, SetPrimaryFileMovesTheMarkAndTellsTheBundle)
{
    show({L"/content/a.txt", L"content/sub/ü 50% #1.txt"});
    model.setPrimaryFile(QStringLiteral("content/a.txt"));
    EXPECT_EQ(primaryFileOfTheBundle(), "content/a.txt");
    model.setPrimaryFile(QStringLiteral("content/sub/ü 50% #1.txt"));
    EXPECT_EQ(dump(model, {}, marks), "content | -\n  a.txt | -\n  sub | -\n    ü 50% #1.txt | #ff0000\n");
    EXPECT_EQ(primaryFileOfTheBundle(), "content/sub/ü 50% #1.txt");
    EXPECT_TRUE(model.hasPrimaryFile());
}

// Kept: rows further down are painted anew for another reason.
TEST_F(ExampleBundleContentModelTest, SetPrimaryFileReportsTheRowsAtTheTopOnly)
{
    show({L"/content/a.txt", L"/x.txt", L"/more/b.txt"});
    SignalLog log{model};
    model.setPrimaryFile(QStringLiteral("content/a.txt"));
    EXPECT_EQ(log.take(), "dataChanged 0,0 2,0 roles 1\n");
}

TEST_F(ExampleBundleContentModelTest, SetPrimaryFileOnAnEmptyTreeChangesTheBundleAndEmitsNothing)
{
    const auto bundle = exampleBundle({});
    // with content of which nothing can be shown there is no row at all
    relateToMissingPart(*bundle, contentRelationship);
    (void)bundle->package()
        .createPart(OpcPackagePartUri{L"/hidden.txt"}, IO::MIMEType{FileType::text}, OpcPackageCompressionType::normal)
        .value();
    model.setBundle(bundle);
    ASSERT_EQ(model.rowCount(), 0);
    SignalLog log{model};
    model.setPrimaryFile(QStringLiteral("hidden.txt"));
    EXPECT_EQ(log.take(), "");
    EXPECT_EQ(primaryFileOfTheBundle(), "hidden.txt");
}

TEST_F(ExampleBundleContentModelTest, ADirectoryOfThePrimaryPathHasTheMarkToo)
{
    show({L"/content/a.txt"});
    model.setPrimaryFile(QStringLiteral("content"));
    EXPECT_EQ(dump(model, {}, marks), "content | #ff0000\n  a.txt | -\n");
}

TEST_F(ExampleBundleContentModelTest, APathInAnotherFormHasNoMarkAlthoughThereIsAPrimaryFile)
{
    show({L"/content/a.txt"});
    model.setPrimaryFile(QStringLiteral("/content/a.txt"));
    EXPECT_TRUE(model.hasPrimaryFile());
    EXPECT_EQ(dump(model, {}, marks), "content | -\n  a.txt | -\n");
}

TEST_F(ExampleBundleContentModelTest, AFileThatTheBundleRefusesIsMarkedAllTheSame)
{
    show({L"/content/a.txt"});
    model.addDirectory(QStringLiteral("new"), {});
    SignalLog log{model};
    model.setPrimaryFile(QStringLiteral("new"));
    EXPECT_EQ(log.take(), "dataChanged 0,0 1,0 roles 1\n");
    EXPECT_EQ(dump(model, {}, marks), "content | -\n  a.txt | -\nnew | #ff0000\n");
    EXPECT_FALSE(model.bundle()->primaryFileRelationship());
}

TEST_F(ExampleBundleContentModelTest, APathThatIsNoUnicodeThrowsAndLeavesTheBundleAsItWas)
{
    show({L"/content/a.txt"});
    SignalLog log{model};
    EXPECT_THROW(model.setPrimaryFile(QString{QChar{0xD800}}), bad_expected_access<ErrorCode2>);
    EXPECT_EQ(log.take(), "");
    EXPECT_TRUE(model.hasPrimaryFile());
    EXPECT_FALSE(model.bundle()->primaryFileRelationship());
}

TEST_F(ExampleBundleContentModelTest, AnotherBundleBringsItsOwnPrimaryFileOrNone)
{
    show({L"/content/a.txt"});
    model.setPrimaryFile(QStringLiteral("content/a.txt"));
    SignalLog log{model};
    show({L"/content/a.txt"});
    EXPECT_EQ(log.take(), "modelAboutToBeReset\nmodelReset\n");
    EXPECT_FALSE(model.hasPrimaryFile());
}

TEST_F(ExampleBundleContentModelTest, APrimaryFileThatIsNotThereIsNone)
{
    show({L"/content/a.txt"});
    model.setPrimaryFile(QStringLiteral("content/a.txt"));
    const auto bundle = exampleBundle({L"/content/a.txt"});
    relateToMissingPart(*bundle, primaryFileType);
    model.setBundle(bundle);
    EXPECT_FALSE(model.hasPrimaryFile());
    EXPECT_EQ(dump(model, {}, marks), "content | -\n  a.txt | -\n");
}

TEST_F(ExampleBundleContentModelTest, APrimaryFileWhoseNameIsNoTextIsNone)
{
    show({L"/content/a.txt"});
    model.setPrimaryFile(QStringLiteral("content/a.txt"));
    const auto bundle = exampleBundle({L"/content/a.txt", L"/content/b%FF.txt"});
    bundle->setPrimaryFile(OpcPackagePartUri{L"/content/b%FF.txt"}).value();
    const Url target = bundle->primaryFileRelationship().value().targetUri().value();
    ASSERT_FALSE(target.toLocalFile(UrlLocalFileOptions::relativePath)) << "the relationship is there, a path is not";
    model.setBundle(bundle);
    EXPECT_FALSE(model.hasPrimaryFile());
    EXPECT_EQ(dump(model, {}, marks), "content | -\n  a.txt | -\n");
}

TEST_F(ExampleBundleContentModelTest, GivesTheBundleAsASharedExample)
{
    const auto bundle = exampleBundle({});
    model.setBundle(bundle);
    const std::shared_ptr<ExampleBundle> shared = model.bundle();
    EXPECT_EQ(shared, bundle);
}

TEST_F(ExampleBundleContentModelTest, TheMarkStandsOnItsRowAfterSavingAndOpening)
{
    const TemporaryFolder folder;
    for (const char* const name : {"a b.va", "50%.va", "#1.va", "ü.va", "電路.va", "\U0001F600.va"}) {
        show({});
        ASSERT_TRUE(model.addFile(toPath(folder.write(name, "bytes")), rowNamed(model, QStringLiteral("content"))));
        model.setPrimaryFile(rowNamed(model, QString::fromUtf8(name)).data(ItemRoles::path).toString());
        const FilePath2 file = toPath(folder / "saved.kvbdl.zip");
        model.bundle()->writeToFile(file).value();
        model.setBundle(std::make_shared<ExampleBundle>(ExampleBundle::open(file).value()));
        EXPECT_TRUE(model.hasPrimaryFile());
        EXPECT_EQ(dump(model, {}, marks), "content | -\n  " + std::string{name} + " | #ff0000\n");
    }
}

TEST_F(ExampleBundleContentModelTest, HoldsWhatQtAsksOfAModel)
{
    const QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
    show({L"/content/a.txt"});
    model.setPrimaryFile(QStringLiteral("content/a.txt"));
    EXPECT_TRUE(model.hasPrimaryFile());
}
