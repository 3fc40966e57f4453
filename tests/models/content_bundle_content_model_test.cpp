#include "models/content_bundle_content_model.h"

#include "kelvaris/system/io/bundle/bundle_error.h"
#include "kelvaris/system/io/opc_packaging/opc_error.h"
#include "models/content_bundle_items.h"
#include "models/item_roles.h"
#include "tests/models/package_fixtures.h"
#include "tests/models/raw_package.h"
#include "tests/models/signal_log.h"
#include "tests/support/model_dump.h"

#include <QtTest/QAbstractItemModelTester>

#include <gtest/gtest.h>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO::Bundle;
using namespace Kelvaris::System::IO::OpcPackaging;

namespace {

const DumpedCells everyRole{{0}, {Qt::DisplayRole, ItemRoles::itemType, ItemRoles::path}};

/// Remembers what it saw when the bundle had changed.
class WatchingModel : public ContentBundleContentModel
{
public:
    std::string seen;
    int calls = 0;

protected:
    void bundleChanged() override
    {
        ++calls;
        seen = dump(*this);
    }
};

class ContentBundleContentModelTest : public testing::Test
{
protected:
    void show(const PartNames& names) { model.setBundle(contentBundle(names)); }

    QModelIndex row(const char* name) const { return rowNamed(model, QString::fromUtf8(name)); }

    FilePath2 file(const char* name) const { return toPath(folder.write(name, "bytes")); }

    std::shared_ptr<ContentBundle> opened(const RawPackage& raw)
    {
        return std::make_shared<ContentBundle>(ContentBundle::open(raw.write(folder)).value());
    }

    bool holds(const wchar_t* partName) const
    {
        return model.bundle()->package().part(OpcPackagePartUri{partName}).hasValue();
    }

    TemporaryFolder folder;
    ContentBundleContentModel model;
};

} // namespace

TEST_F(ContentBundleContentModelTest, WithoutABundleThereAreNoRowsAtAll)
{
    EXPECT_EQ(dump(model), "");
    EXPECT_EQ(model.bundle(), nullptr);
    ASSERT_NE(model.itemFromIndex({}), nullptr);
    EXPECT_EQ(model.itemFromIndex({})->name(), QString{});
}

TEST_F(ContentBundleContentModelTest, ABundleWithoutContentHasOneEmptyDirectoryContent)
{
    show({});
    EXPECT_EQ(dump(model, {}, everyRole), "content | 1 | content\n");
    EXPECT_EQ(model.rowCount(model.index(0, 0)), 0);
}

TEST_F(ContentBundleContentModelTest, ABundleWithContentHasNoDirectoryContentOfItsOwn)
{
    show({L"/other/a.txt"});
    EXPECT_EQ(dump(model), "other\n  a.txt\n");
}

TEST_F(ContentBundleContentModelTest, PartsAtTheTopStandAheadOfEveryDirectory)
{
    show({L"/content/a.txt", L"/top.txt"});
    EXPECT_EQ(dump(model, {}, everyRole), "top.txt | 0 | top.txt\n"
                                          "content | 1 | content\n"
                                          "  a.txt | 0 | content/a.txt\n");
}

TEST_F(ContentBundleContentModelTest, PartsStandAheadOfDirectoriesAndNothingIsSorted)
{
    show({L"/content/z/deep/1.txt", L"/content/y.txt", L"/content/b/2.txt", L"/content/a.txt", L"/content/z/3.txt"});
    EXPECT_EQ(dump(model, {}, everyRole), "content | 1 | content\n"
                                          "  y.txt | 0 | content/y.txt\n"
                                          "  a.txt | 0 | content/a.txt\n"
                                          "  z | 1 | content/z\n"
                                          "    3.txt | 0 | content/z/3.txt\n"
                                          "    deep | 1 | content/z/deep\n"
                                          "      1.txt | 0 | content/z/deep/1.txt\n"
                                          "  b | 1 | content/b\n"
                                          "    2.txt | 0 | content/b/2.txt\n");
}

TEST_F(ContentBundleContentModelTest, DirectoriesThatDifferInCaseAreTwo)
{
    show({L"/Content/a.txt", L"/content/b.txt"});
    EXPECT_EQ(dump(model), "Content\n  a.txt\ncontent\n  b.txt\n");
}

TEST_F(ContentBundleContentModelTest, NamesAreShownDecoded)
{
    show({L"content/50 % #1 ü 電 \U0001F600.txt"});
    EXPECT_EQ(dump(model, {}, everyRole), "content | 1 | content\n"
                                          "  50 % #1 ü 電 \U0001F600.txt | 0 | content/50 % #1 ü 電 \U0001F600.txt\n");
}

TEST_F(ContentBundleContentModelTest, PartsThatNoContentRelationshipReachesAreNotShown)
{
    model.setBundle(opened(RawPackage{}.part("/content/a.txt").part("/content/b.txt").content("content/b.txt")));
    EXPECT_EQ(dump(model), "content\n  b.txt\n");
}

TEST_F(ContentBundleContentModelTest, RowsStandInTheOrderOfTheRelationships)
{
    RawPackage raw;
    raw.part("/content/a.txt").part("/content/b.txt").content("content/b.txt").content("content/a.txt");
    model.setBundle(opened(raw));
    EXPECT_EQ(dump(model), "content\n  b.txt\n  a.txt\n");
}

TEST_F(ContentBundleContentModelTest, ARelationshipWithoutAPartBehindItIsLeftOutAndTheWalkGoesOn)
{
    RawPackage raw;
    raw.part("/content/a.txt").part("/content/b.txt");
    raw.content("content/a.txt").content("content/missing.txt").content("http://x.example/y.txt", "External");
    raw.content("content/b.txt");
    model.setBundle(opened(raw));
    EXPECT_EQ(dump(model), "content\n  a.txt\n  b.txt\n");
}

TEST_F(ContentBundleContentModelTest, APartWhoseNameIsNoTextIsLeftOutAndTheWalkGoesOn)
{
    RawPackage raw;
    raw.part("/content/b%FF.txt").part("/content/a.txt").content("/content/b%FF.txt").content("/content/a.txt");
    model.setBundle(opened(raw));
    EXPECT_EQ(dump(model), "content\n  a.txt\n");
}

TEST_F(ContentBundleContentModelTest, ContentThatCannotBeReachedLeavesNoDirectoryContent)
{
    model.setBundle(opened(RawPackage{}.content("content/missing.txt")));
    EXPECT_EQ(dump(model), "");
}

TEST_F(ContentBundleContentModelTest, AnyOtherRoleGivesNothing)
{
    show({L"/content/a.txt"});
    for (const int role : {int{Qt::ToolTipRole}, int{Qt::DecorationRole}, Qt::UserRole + 2})
        EXPECT_FALSE(row("a.txt").data(role).isValid());
    EXPECT_EQ(row("a.txt").data(Qt::EditRole).toString(), QStringLiteral("a.txt"));
}

TEST_F(ContentBundleContentModelTest, TheInvalidIndexHasNoDataNotEvenAPath)
{
    show({L"/content/a.txt"});
    for (const int role : {int{Qt::DisplayRole}, ItemRoles::itemType, ItemRoles::path})
        EXPECT_FALSE(model.data({}, role).isValid());
}

TEST_F(ContentBundleContentModelTest, ItemTypesAndPathsHaveTheRoles256And257)
{
    EXPECT_EQ(ItemRoles::itemType, 256);
    EXPECT_EQ(ItemRoles::path, 257);
    show({L"/content/a.txt"});
    EXPECT_EQ(row("a.txt").data(256).userType(), int{QMetaType::Int});
}

TEST_F(ContentBundleContentModelTest, HasNoIndexPastItsEnds)
{
    show({L"/content/a.txt", L"/b.txt"});
    EXPECT_FALSE(model.index(2, 0).isValid());
    EXPECT_FALSE(model.index(0, 1).isValid());
    EXPECT_FALSE(model.index(-1, 0).isValid());
    EXPECT_FALSE(model.index(1, 0, row("content")).isValid());
    EXPECT_FALSE(model.index(0, 0, row("b.txt")).isValid());
    EXPECT_EQ(model.columnCount(row("content")), 1);
}

TEST_F(ContentBundleContentModelTest, ParentsAreFoundAtAnyDepthBehindPartsAndDirectories)
{
    show({L"/p.txt", L"/x/1.txt", L"/a/q.txt", L"/a/y/2.txt", L"/a/b/r.txt", L"/a/b/c/d.txt"});
    QModelIndex parent;
    for (const char* const name : {"a", "b", "c", "d.txt"}) {
        const QModelIndex index = rowNamed(model, QLatin1String{name}, parent);
        ASSERT_TRUE(index.isValid()) << name;
        EXPECT_EQ(index.parent(), parent) << name;
        EXPECT_EQ(model.itemFromIndex(index)->name(), QLatin1String{name});
        parent = index;
    }
    EXPECT_FALSE(model.parent({}).isValid());
}

TEST_F(ContentBundleContentModelTest, NoCellIsEditable)
{
    show({L"/content/a.txt"});
    EXPECT_EQ(model.flags(row("a.txt")), Qt::ItemIsSelectable | Qt::ItemIsEnabled);
    EXPECT_FALSE(model.setData(row("a.txt"), QStringLiteral("x")));
}

TEST_F(ContentBundleContentModelTest, SetBundleTellsOfTheChangeWithTheNewTreeInPlaceAheadOfTheEndOfTheReset)
{
    WatchingModel watching;
    EXPECT_EQ(watching.calls, 0) << "the constructor runs while there is no subclass yet";
    std::string seenAtTheEnd = "no reset";
    QObject::connect(&watching, &QAbstractItemModel::modelReset, [&] { seenAtTheEnd = watching.seen; });
    watching.setBundle(contentBundle({L"/content/a.txt"}));
    EXPECT_EQ(watching.calls, 1);
    EXPECT_EQ(seenAtTheEnd, "content\n  a.txt\n");
}

TEST_F(ContentBundleContentModelTest, SetBundleResetsTheModelAndNothingElse)
{
    SignalLog log{model};
    show({L"/content/a.txt"});
    EXPECT_EQ(log.take(), "modelAboutToBeReset\nmodelReset\n");
}

TEST_F(ContentBundleContentModelTest, SetBundleReleasesTheOldBundleAndItsTree)
{
    show({L"/content/a.txt"});
    const std::weak_ptr<ContentBundle> watched = model.bundle();
    show({L"/content/b.txt"});
    EXPECT_TRUE(watched.expired());
    EXPECT_EQ(dump(model), "content\n  b.txt\n");
    model.setBundle(nullptr);
    EXPECT_EQ(dump(model), "");
}

TEST_F(ContentBundleContentModelTest, AddDirectoryAppendsItBehindPartsAndDirectories)
{
    show({L"/content/a.txt", L"/content/sub/b.txt"});
    SignalLog log{model};
    model.addDirectory(QStringLiteral("new"), row("content"));
    EXPECT_EQ(log.take(), "rowsAboutToBeInserted content 2-2\nrowsInserted content 2-2\n");
    EXPECT_EQ(dump(model), "content\n  a.txt\n  sub\n    b.txt\n  new\n");
    EXPECT_EQ(row("new").data(ItemRoles::path).toString(), QStringLiteral("content/new"));
}

TEST_F(ContentBundleContentModelTest, AddDirectoryBelowTheInvalidIndexStandsAtTheTop)
{
    show({});
    SignalLog log{model};
    model.addDirectory(QStringLiteral("new"), {});
    EXPECT_EQ(log.take(), "rowsAboutToBeInserted / 1-1\nrowsInserted / 1-1\n");
    EXPECT_EQ(dump(model), "content\nnew\n");
}

// Kept: an insertion is announced whether or not a row comes of it.
TEST_F(ContentBundleContentModelTest, AddDirectoryWithAnExistingNameSignalsAnInsertionYetAddsNoRow)
{
    show({L"/content/sub/a.txt"});
    SignalLog log{model};
    model.addDirectory(QStringLiteral("sub"), row("content"));
    EXPECT_EQ(log.take(), "rowsAboutToBeInserted content 1-1\nrowsInserted content 1-1\n");
    EXPECT_EQ(dump(model), "content\n  sub\n    a.txt\n");
}

TEST_F(ContentBundleContentModelTest, AddDirectoryTakesTheNameOfAPartOrOfADirectoryInAnotherCase)
{
    show({L"/content/sub/a.txt", L"/content/b.txt"});
    model.addDirectory(QStringLiteral("SUB"), row("content"));
    model.addDirectory(QStringLiteral("b.txt"), row("content"));
    EXPECT_EQ(dump(model), "content\n  b.txt\n  sub\n    a.txt\n  SUB\n  b.txt\n");
}

TEST_F(ContentBundleContentModelTest, AddDirectoryBelowAPartDoesNothing)
{
    show({L"/content/a.txt"});
    SignalLog log{model};
    model.addDirectory(QStringLiteral("new"), row("a.txt"));
    EXPECT_EQ(log.take(), "");
    EXPECT_EQ(dump(model), "content\n  a.txt\n");
}

TEST_F(ContentBundleContentModelTest, AnEmptyDirectoryIsGoneAfterTheNextSetBundle)
{
    show({L"/content/a.txt"});
    model.addDirectory(QStringLiteral("new"), row("content"));
    model.setBundle(model.bundle());
    EXPECT_EQ(dump(model), "content\n  a.txt\n");
}

TEST_F(ContentBundleContentModelTest, AddFileStoresItAtThePathOfTheDirectoryBehindThePartsAndAheadOfTheDirectories)
{
    show({L"/content/a.txt", L"/content/sub/b.txt"});
    SignalLog log{model};
    ASSERT_TRUE(model.addFile(file("new file.txt"), row("content")));
    EXPECT_EQ(log.take(), "rowsAboutToBeInserted content 1-1\nrowsInserted content 1-1\n");
    EXPECT_EQ(dump(model), "content\n  a.txt\n  new file.txt\n  sub\n    b.txt\n");
    EXPECT_TRUE(holds(L"/content/new%20file.txt"));
    model.setBundle(model.bundle());
    EXPECT_EQ(dump(model), "content\n  a.txt\n  new file.txt\n  sub\n    b.txt\n");
}

TEST_F(ContentBundleContentModelTest, AddFileGivesTheNewPart)
{
    show({});
    const auto part = model.addFile(file("a.va"), row("content"));
    ASSERT_TRUE(part);
    EXPECT_EQ(part->uri().value().toString().value(), String2{u8"/content/a.va"});
}

TEST_F(ContentBundleContentModelTest, AddFileTakesTheMediaTypeFromTheName)
{
    show({});
    for (const char* const name : {"page.html", "d.kvsch"})
        ASSERT_TRUE(model.addFile(file(name), row("content")));
    EXPECT_EQ(savedEntry(*model.bundle(), folder, "/content/page.html").mediaType, "text/html");
    EXPECT_EQ(savedEntry(*model.bundle(), folder, "/content/d.kvsch").mediaType, "application/vnd.kelvaris.schematic");
}

TEST_F(ContentBundleContentModelTest, AddFileCompressesTheBytesInTheNormalWay)
{
    show({});
    const FilePath2 source = toPath(folder.write("a.txt", compressibleText()));
    ASSERT_TRUE(model.addFile(source, row("content")));
    ASSERT_TRUE(model.bundle()->createContentPartFromFile(
        source, OpcPackagePartUri{L"/normal.txt"}, IO::MIMEType{FileType::text}, OpcPackageCompressionType::normal));
    const InspectedEntry entry = savedEntry(*model.bundle(), folder, "/content/a.txt");
    EXPECT_TRUE(entry.isCompressed);
    EXPECT_EQ(entry.compressedSize, savedEntry(*model.bundle(), folder, "/normal.txt").compressedSize);
}

TEST_F(ContentBundleContentModelTest, AddFileBelowTheInvalidIndexStoresItAtTheRoot)
{
    show({});
    SignalLog log{model};
    ASSERT_TRUE(model.addFile(file("top.txt"), {}));
    EXPECT_EQ(log.take(), "rowsAboutToBeInserted / 0-0\nrowsInserted / 0-0\n");
    EXPECT_EQ(dump(model), "top.txt\ncontent\n");
    EXPECT_TRUE(holds(L"/top.txt"));
}

TEST_F(ContentBundleContentModelTest, AddFileBelowANewDirectoryWritesItIntoTheBundle)
{
    show({});
    model.addDirectory(QStringLiteral("näw %"), row("content"));
    ASSERT_TRUE(model.addFile(file("ü #1.txt"), row("näw %")));
    EXPECT_EQ(row("ü #1.txt").data(ItemRoles::path).toString(), QStringLiteral("content/näw %/ü #1.txt"));
    model.setBundle(model.bundle());
    EXPECT_EQ(dump(model), "content\n  näw %\n    ü #1.txt\n");
}

TEST_F(ContentBundleContentModelTest, AddFileBelowAPartIsRefusedAndSilent)
{
    show({L"/content/a.txt"});
    SignalLog log{model};
    const auto part = model.addFile(file("b.txt"), row("a.txt"));
    ASSERT_FALSE(part);
    EXPECT_EQ(part.error(), (ErrorCode2{5, bundle_error_category()}));
    EXPECT_EQ(log.take(), "");
    EXPECT_EQ(dump(model), "content\n  a.txt\n");
    EXPECT_FALSE(holds(L"/content/b.txt"));
}

// Kept: the row appears, and the caller is the one who knows.
TEST_F(ContentBundleContentModelTest, AddFileShowsARowThatTheBundleRefused)
{
    show({L"/content/a.txt"});
    SignalLog log{model};
    const auto part = model.addFile(file("a.txt"), row("content"));
    ASSERT_FALSE(part);
    EXPECT_EQ(part.error().value(), static_cast<int>(OpcError::partExists));
    EXPECT_EQ(log.take(), "rowsAboutToBeInserted content 1-1\nrowsInserted content 1-1\n");
    EXPECT_EQ(dump(model), "content\n  a.txt\n  a.txt\n");
    model.setBundle(model.bundle());
    EXPECT_EQ(dump(model), "content\n  a.txt\n");
}

TEST_F(ContentBundleContentModelTest, AddFileThatDoesNotExistShowsARowAndGivesTheSystemsError)
{
    show({});
    const auto part = model.addFile(toPath(folder / "missing.txt"), row("content"));
    ASSERT_FALSE(part);
    EXPECT_EQ(&part.error().category(), &system_error_category());
    EXPECT_EQ(dump(model), "content\n  missing.txt\n");
}

// Kept: there is no row to end the insertion with.
TEST_F(ContentBundleContentModelTest, AddFileWithoutAFileNameBeginsAnInsertionThatNeverEnds)
{
    show({});
    SignalLog log{model};
    const auto part = model.addFile(FilePath2{}, row("content"));
    ASSERT_FALSE(part);
    EXPECT_EQ(part.error(), FilePath2{}.filename().error());
    EXPECT_EQ(log.take(), "rowsAboutToBeInserted content 0-0\n");
    EXPECT_EQ(dump(model), "content\n");
}

TEST_F(ContentBundleContentModelTest, AfterAnInsertionThatNeverEndedTheNextOneWorks)
{
    show({});
    EXPECT_FALSE(model.addFile(FilePath2{}, row("content")));
    const QPersistentModelIndex content = row("content");
    SignalLog log{model};
    EXPECT_TRUE(model.addFile(file("a.txt"), content));
    EXPECT_TRUE(model.addFile(file("top.txt"), {}));
    EXPECT_EQ(log.take(), "rowsAboutToBeInserted content 0-0\nrowsInserted content 0-0\n"
                          "rowsAboutToBeInserted / 0-0\nrowsInserted / 0-0\n");
    EXPECT_EQ(dump(model), "top.txt\ncontent\n  a.txt\n");
    EXPECT_EQ(content.row(), 1);
}

TEST_F(ContentBundleContentModelTest, PersistentIndexesOfDirectoriesFollowAnAddedFile)
{
    show({L"/content/sub/a.txt"});
    const QPersistentModelIndex sub = row("sub");
    const QPersistentModelIndex deep = row("a.txt");
    ASSERT_TRUE(model.addFile(file("b.txt"), row("content")));
    EXPECT_EQ(sub.row(), 1);
    EXPECT_EQ(sub.data().toString(), QStringLiteral("sub"));
    EXPECT_EQ(deep.parent(), sub);
}

// No directory is added that is there already: Qt's tester stops at an insertion of which no row comes.
TEST_F(ContentBundleContentModelTest, HoldsWhatQtAsksOfAModel)
{
    const QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
    show({L"/content/a.txt", L"/content/sub/deep/b.txt"});
    EXPECT_TRUE(model.addFile(file("c.txt"), row("sub")));
    model.addDirectory(QStringLiteral("new"), row("content"));
    model.setBundle(nullptr);
    EXPECT_EQ(dump(model), "");
}
