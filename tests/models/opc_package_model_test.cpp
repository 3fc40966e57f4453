#include "models/opc_package_model.h"

#include "kelvaris/system/io/opc_packaging/opc_error.h"
#include "models/item_roles.h"
#include "models/opc_package_items.h"
#include "tests/models/package_fixtures.h"
#include "tests/models/raw_package.h"
#include "tests/models/signal_log.h"
#include "tests/support/model_dump.h"

#include <QtTest/QAbstractItemModelTester>

#include <gtest/gtest.h>

#include <array>
#include <set>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;
using namespace Kelvaris::System::IO::OpcPackaging;

namespace {

const DumpedCells namesAndTypes{{0}, {Qt::DisplayRole, ItemRoles::itemType}};
constexpr const char8_t* relationshipType = u8"http://x.example/content";

class OpcPackageModelTest : public testing::Test
{
protected:
    std::shared_ptr<OpcPackage> packageOf(std::initializer_list<const char*> names)
    {
        RawPackage raw;
        for (const char* const name : names)
            raw.part(name);
        return std::make_shared<OpcPackage>(open_package(raw.write(folder)).value());
    }

    void show(std::initializer_list<const char*> names)
    {
        package = packageOf(names);
        model.setPackage(package);
    }

    QModelIndex row(const char* name) const { return rowNamed(model, QString::fromUtf8(name)); }

    FilePath2 file(const char* name) const { return toPath(folder.write(name, "bytes")); }

    Expected<void, ErrorCode2> add(const FilePath2& path, const QModelIndex& parent)
    {
        return model.addFile(path, parent, MIMEType{FileType::text}, model.partsIndex(), relationshipType,
                             OpcPackageCompressionType::normal);
    }

    bool holds(const wchar_t* partName) const { return model.package()->part(OpcPackagePartUri{partName}).hasValue(); }

    std::vector<std::string> relationshipTargets() const
    {
        std::vector<std::string> targets;
        const auto relationships = model.package()->relationshipsByType(relationshipType).value();
        for (auto it = relationships.begin(); it != decltype(it)::Sentinel{}; ++it) {
            const String2 text = (*it).targetUri().value().text();
            targets.emplace_back(reinterpret_cast<const char*>(text.data()), text.length());
        }
        return targets;
    }

    TemporaryFolder folder;
    std::shared_ptr<OpcPackage> package;
    OpcPackageModel model{nullptr};
};

// The two empty rows, by everything that they answer.
void expectNoPackage(const OpcPackageModel& model)
{
    EXPECT_EQ(dump(model), "-\n-\n");
    EXPECT_EQ(model.index(0, 0).internalPointer(), nullptr);
    EXPECT_EQ(model.index(1, 0).internalPointer(), nullptr);
    EXPECT_EQ(model.package(), nullptr);
}

} // namespace

TEST_F(OpcPackageModelTest, WithoutAPackageThereAreTwoEmptyRowsWithNullPointers)
{
    expectNoPackage(model);
    EXPECT_EQ(model.partsIndex(), model.index(0, 0));
    EXPECT_EQ(model.relationshipsIndex(), model.index(1, 0));
    EXPECT_FALSE(model.index(2, 0).isValid());
    EXPECT_FALSE(model.parent(model.index(0, 0)).isValid());
    EXPECT_FALSE(model.isPartRow(model.index(0, 0)));
    for (const int role : {int{Qt::DisplayRole}, int{Qt::EditRole}, ItemRoles::itemType})
        EXPECT_FALSE(model.index(0, 0).data(role).isValid());
}

// Kept: a row without an item counts as the top level.
TEST_F(OpcPackageModelTest, ARowWithoutAnItemReportsTwoRowsBelowItAgainWithNullPointers)
{
    QModelIndex parent = model.index(1, 0);
    for (int depth = 0; depth < 5; ++depth) {
        EXPECT_EQ(model.rowCount(parent), 2);
        const QModelIndex below = model.index(0, 0, parent);
        ASSERT_TRUE(below.isValid());
        EXPECT_EQ(below.internalPointer(), nullptr);
        EXPECT_FALSE(model.index(2, 0, parent).isValid());
        parent = below;
    }
}

TEST_F(OpcPackageModelTest, ARowWithoutAnItemHasNoChildrenForViews)
{
    EXPECT_TRUE(model.hasChildren());
    EXPECT_FALSE(model.hasChildren(model.index(0, 0)));
    EXPECT_FALSE(model.hasChildren(model.index(1, 0)));
}

TEST_F(OpcPackageModelTest, WithoutAPackageNothingCanBeAddedAndNothingIsSignalled)
{
    SignalLog log{model};
    EXPECT_FALSE(model.addDirectory(QStringLiteral("new"), model.index(0, 0)));
    EXPECT_FALSE(model.addDirectory(QStringLiteral("new"), {}));
    EXPECT_EQ(log.take(), "");
}

TEST_F(OpcPackageModelTest, FromAFailureToOpenThereAreTwoEmptyRows)
{
    const OpcPackageModel failed{OpcPackage::open(toPath(folder / "missing.zip"), OpcPackageOpenFlag::readOnDemand),
                                 nullptr};
    expectNoPackage(failed);
}

TEST_F(OpcPackageModelTest, EachConstructorShowsItsPackage)
{
    const FilePath2 path = RawPackage{}.part("/a/b.txt").write(folder);
    const std::string expected = "Parts\n  a\n    b.txt\nRelationships\n";
    EXPECT_EQ(dump(OpcPackageModel{OpcPackage::open(path, OpcPackageOpenFlag::readOnDemand), nullptr}), expected);
    EXPECT_EQ(dump(OpcPackageModel{open_package(path).value(), nullptr}), expected);
    EXPECT_EQ(dump(OpcPackageModel{std::make_shared<OpcPackage>(open_package(path).value()), nullptr}), expected);
}

TEST_F(OpcPackageModelTest, APackageWithoutPartsShowsTwoRowsWithoutChildren)
{
    show({});
    EXPECT_EQ(dump(model, {}, namesAndTypes), "Parts | 1\nRelationships | 2\n");
    EXPECT_FALSE(model.hasChildren(model.partsIndex()));
    EXPECT_EQ(model.rowCount(model.relationshipsIndex()), 0);
}

TEST_F(OpcPackageModelTest, ANullPackageShowsTwoRowsWithoutChildren)
{
    show({"/a.txt"});
    model.setPackage(nullptr);
    EXPECT_EQ(dump(model, {}, namesAndTypes), "Parts | 1\nRelationships | 2\n");
    EXPECT_EQ(model.package(), nullptr);
    model.setPackage(std::shared_ptr<OpcPackage>{});
    EXPECT_EQ(dump(model), "Parts\nRelationships\n");
    EXPECT_EQ(model.package(), nullptr);
}

TEST_F(OpcPackageModelTest, ShowsPartsAheadOfDirectories)
{
    show({"/content/a/b.txt", "/content/z.txt", "/m/1.txt", "/top.txt", "/content/a/a.txt"});
    EXPECT_EQ(dump(model, {}, namesAndTypes), "Parts | 1\n"
                                              "  top.txt | 0\n"
                                              "  content | 1\n"
                                              "    z.txt | 0\n"
                                              "    a | 1\n"
                                              "      b.txt | 0\n"
                                              "      a.txt | 0\n"
                                              "  m | 1\n"
                                              "    1.txt | 0\n"
                                              "Relationships | 2\n");
}

TEST_F(OpcPackageModelTest, DirectoriesThatDifferInCaseAreTwo)
{
    show({"/Sub/1.txt", "/sub/2.txt"});
    EXPECT_EQ(dump(model), "Parts\n  Sub\n    1.txt\n  sub\n    2.txt\nRelationships\n");
}

TEST_F(OpcPackageModelTest, NamesAreShownDecodedAndTheUriAsItStands)
{
    show({"/a%20b/50%25%20%C3%BC.txt"});
    EXPECT_EQ(dump(model), "Parts\n  a b\n    50% ü.txt\nRelationships\n");
    const auto* const part = static_cast<const OpcPackageModel::Part*>(
        static_cast<OpcPackageModel::ModelItem*>(row("50% ü.txt").internalPointer()));
    EXPECT_EQ(part->uri().toString().value(), String2{u8"/a%20b/50%25%20%C3%BC.txt"});
}

TEST_F(OpcPackageModelTest, APartWhoseNameIsNoTextIsLeftOutAndTheWalkGoesOn)
{
    show({"/a.txt", "/b%FF.txt", "/c.txt"});
    ASSERT_FALSE(OpcPackagePartUri{L"/b%FF.txt"}.toUri().value().toLocalFile(UrlLocalFileOptions::relativePath));
    EXPECT_EQ(dump(model), "Parts\n  a.txt\n  c.txt\nRelationships\n");
}

TEST_F(OpcPackageModelTest, RelationshipsHasNoRowsWhateverThePackageHolds)
{
    const auto path = RawPackage{}.part("/a.txt").relationship("http://x.example/t", "a.txt").write(folder);
    model.setPackage(std::make_shared<OpcPackage>(open_package(path).value()));
    EXPECT_EQ(model.rowCount(model.relationshipsIndex()), 0);
    EXPECT_FALSE(model.index(0, 0, model.relationshipsIndex()).isValid());
    const auto* const item = static_cast<OpcPackageModel::ModelItem*>(model.relationshipsIndex().internalPointer());
    EXPECT_EQ(item->rowOf(item), 0);
    EXPECT_EQ(item->child(0), nullptr);
}

TEST_F(OpcPackageModelTest, PartsThatCannotBeReadLeaveTheRowPartsEmpty)
{
    const auto path = RawPackage{}.entry("[Content_Types].xml", "this is no XML").entry("a.txt", "x").write(folder);
    model.setPackage(std::make_shared<OpcPackage>(open_package(path).value()));
    ASSERT_FALSE(model.package()->parts());
    EXPECT_EQ(dump(model), "Parts\nRelationships\n");
}

TEST_F(OpcPackageModelTest, OnlyColumnZeroHasDataAndOnlyInThreeRoles)
{
    show({"/a.txt"});
    const auto* const item = static_cast<OpcPackageModel::ModelItem*>(row("a.txt").internalPointer());
    EXPECT_EQ(item->data(0, Qt::EditRole).toString(), QStringLiteral("a.txt"));
    EXPECT_EQ(item->data(0, Qt::UserRole).userType(), int{QMetaType::Int});
    EXPECT_FALSE(item->data(0, Qt::UserRole + 1).isValid());
    EXPECT_FALSE(item->data(0, Qt::ToolTipRole).isValid());
    EXPECT_FALSE(item->data(1, Qt::DisplayRole).isValid());
    EXPECT_FALSE(item->data(1, Qt::UserRole).isValid());
}

TEST_F(OpcPackageModelTest, HasNoIndexPastItsEnds)
{
    show({"/a/b.txt", "/c.txt"});
    EXPECT_FALSE(model.index(2, 0).isValid());
    EXPECT_FALSE(model.index(0, 1).isValid());
    EXPECT_FALSE(model.index(-1, 0).isValid());
    EXPECT_FALSE(model.index(2, 0, model.partsIndex()).isValid());
    EXPECT_FALSE(model.index(0, 0, row("c.txt")).isValid());
    EXPECT_FALSE(model.parent({}).isValid());
    EXPECT_FALSE(model.data({}, Qt::DisplayRole).isValid());
}

TEST_F(OpcPackageModelTest, ItemsAnswerNullAndMinusOnePastTheirEnds)
{
    show({"/a/b.txt", "/c.txt"});
    const auto* const parts = static_cast<OpcPackageModel::ModelItem*>(model.partsIndex().internalPointer());
    const auto* const part = static_cast<OpcPackageModel::ModelItem*>(row("b.txt").internalPointer());
    EXPECT_EQ(parts->child(2), nullptr);
    EXPECT_EQ(parts->child(-1), nullptr);
    EXPECT_EQ(parts->rowOf(part), -1);
    EXPECT_EQ(parts->rowOf(part->parent()), 1);
    EXPECT_EQ(part->child(0), nullptr);
    EXPECT_EQ(part->rowOf(part), -1);
    EXPECT_EQ(part->parent()->parent(), parts);
    EXPECT_EQ(parts->parent(), nullptr);
}

TEST_F(OpcPackageModelTest, ParentsAreFoundAtAnyDepthBehindPartsAndDirectories)
{
    show({"/p.txt", "/x/1.txt", "/a/q.txt", "/a/y/2.txt", "/a/b/r.txt", "/a/b/c/d.txt"});
    QModelIndex parent;
    for (const char* const name : {"Parts", "a", "b", "c", "d.txt"}) {
        const QModelIndex index = rowNamed(model, QLatin1String{name}, parent);
        ASSERT_TRUE(index.isValid()) << name;
        EXPECT_EQ(index.parent(), parent) << name;
        parent = index;
    }
}

TEST_F(OpcPackageModelTest, IsPartRowHoldsForPartsAndTheirDirectoriesOnly)
{
    show({"/a/b.txt"});
    for (const char* const name : {"Parts", "a", "b.txt"})
        EXPECT_TRUE(model.isPartRow(row(name))) << name;
    EXPECT_FALSE(model.isPartRow(model.relationshipsIndex()));
    EXPECT_FALSE(model.isPartRow({}));
}

TEST_F(OpcPackageModelTest, SetPackageResetsTheModelAndNothingElse)
{
    SignalLog log{model};
    show({"/a.txt"});
    EXPECT_EQ(log.take(), "modelAboutToBeReset\nmodelReset\n");
}

TEST_F(OpcPackageModelTest, ASharedPackageIsKeptAndARawOneIsNot)
{
    auto shared = packageOf({"/a.txt"});
    const std::weak_ptr<OpcPackage> watched = shared;
    model.setPackage(std::move(shared));
    EXPECT_EQ(model.package(), watched.lock().get());
    OpcPackage raw = open_package(RawPackage{}.part("/b.txt").write(folder, "other.zip")).value();
    model.setPackage(&raw);
    EXPECT_TRUE(watched.expired());
    EXPECT_EQ(model.package(), &raw);
    EXPECT_EQ(dump(model), "Parts\n  b.txt\nRelationships\n");
}

TEST_F(OpcPackageModelTest, NoCellIsEditable)
{
    show({"/a.txt"});
    EXPECT_EQ(model.flags(row("a.txt")), Qt::ItemIsSelectable | Qt::ItemIsEnabled);
    EXPECT_FALSE(model.setData(row("a.txt"), QStringLiteral("x")));
}

TEST_F(OpcPackageModelTest, IsNameFreeLooksAtDirectoriesAndPartsInAnyCase)
{
    show({"/Sub/a.txt", "/b.TXT"});
    const auto& parts = *static_cast<const OpcPackageModel::PartDirectory*>(
        static_cast<OpcPackageModel::ModelItem*>(model.partsIndex().internalPointer()));
    EXPECT_FALSE(model.isNameFree(parts, QStringLiteral("sUB")));
    EXPECT_FALSE(model.isNameFree(parts, QStringLiteral("B.txt")));
    EXPECT_TRUE(model.isNameFree(parts, QStringLiteral("a.txt")));
    EXPECT_TRUE(model.isNameFree(parts, QString{}));
}

TEST_F(OpcPackageModelTest, AddDirectoryAppendsItToTheTreeAndNotToThePackage)
{
    show({"/a.txt", "/sub/b.txt"});
    SignalLog log{model};
    EXPECT_TRUE(model.addDirectory(QStringLiteral("new"), model.partsIndex()));
    EXPECT_EQ(log.take(), "rowsAboutToBeInserted Parts 2-2\nrowsInserted Parts 2-2\n");
    EXPECT_TRUE(model.addDirectory(QStringLiteral("deep"), row("new")));
    EXPECT_EQ(dump(model), "Parts\n  a.txt\n  sub\n    b.txt\n  new\n    deep\nRelationships\n");
    model.setPackage(package);
    EXPECT_EQ(dump(model), "Parts\n  a.txt\n  sub\n    b.txt\nRelationships\n");
}

TEST_F(OpcPackageModelTest, AddDirectoryRefusesANameThatIsTakenInAnyCase)
{
    show({"/Sub/a.txt", "/b.txt"});
    SignalLog log{model};
    EXPECT_FALSE(model.addDirectory(QStringLiteral("sub"), model.partsIndex()));
    EXPECT_FALSE(model.addDirectory(QStringLiteral("B.TXT"), model.partsIndex()));
    EXPECT_EQ(log.take(), "");
    EXPECT_EQ(dump(model), "Parts\n  b.txt\n  Sub\n    a.txt\nRelationships\n");
}

TEST_F(OpcPackageModelTest, AddDirectoryRefusesPartsRelationshipsAndTheInvalidIndex)
{
    show({"/a.txt"});
    SignalLog log{model};
    EXPECT_FALSE(model.addDirectory(QStringLiteral("new"), row("a.txt")));
    EXPECT_FALSE(model.addDirectory(QStringLiteral("new"), model.relationshipsIndex()));
    EXPECT_FALSE(model.addDirectory(QStringLiteral("new"), {}));
    EXPECT_EQ(log.take(), "");
}

TEST_F(OpcPackageModelTest, AddFileStoresThePartAndRelatesThePackageToIt)
{
    show({"/sub/a.txt"});
    EXPECT_TRUE(add(file("new ü.txt"), row("sub")));
    EXPECT_TRUE(holds(L"/sub/new%20%C3%BC.txt"));
    EXPECT_EQ(relationshipTargets(), std::vector<std::string>{"/sub/new%20%C3%BC.txt"});
    const std::string expected = "Parts\n  sub\n    a.txt\n    new ü.txt\nRelationships\n";
    EXPECT_EQ(dump(model), expected);
    model.setPackage(package);
    EXPECT_EQ(dump(model), expected);
}

TEST_F(OpcPackageModelTest, AddFileBelowTheRowPartsStoresItAtTheRoot)
{
    show({});
    EXPECT_TRUE(add(file("top.txt"), model.partsIndex()));
    EXPECT_TRUE(holds(L"/top.txt"));
    EXPECT_EQ(dump(model), "Parts\n  top.txt\nRelationships\n");
}

TEST_F(OpcPackageModelTest, AddFileBelowANewDirectoryBringsItIntoThePackage)
{
    show({});
    ASSERT_TRUE(model.addDirectory(QStringLiteral("new 1"), model.partsIndex()));
    EXPECT_TRUE(add(file("a.txt"), row("new 1")));
    EXPECT_TRUE(holds(L"/new%201/a.txt"));
}

TEST_F(OpcPackageModelTest, AddFileStoresThePartUnderTheMediaTypeAndWithTheCompressionThatItIsGiven)
{
    const auto bundle = contentBundle({});
    model.setPackage(&bundle->package());
    std::set<std::uint64_t> sizes;
    for (const auto compression : {OpcPackageCompressionType::none, OpcPackageCompressionType::normal,
                                   OpcPackageCompressionType::maximum, OpcPackageCompressionType::fast}) {
        const std::string name = std::to_string(static_cast<int>(compression)) + ".txt";
        ASSERT_TRUE(model.addFile(toPath(folder.write(name, compressibleText())), model.partsIndex(),
                                  MIMEType{FileType::html}, {}, relationshipType, compression));
        const InspectedEntry entry = savedEntry(*bundle, folder, "/" + name);
        EXPECT_EQ(entry.mediaType, "text/html");
        EXPECT_EQ(entry.isCompressed, compression != OpcPackageCompressionType::none);
        sizes.insert(entry.compressedSize);
    }
    EXPECT_EQ(sizes.size(), 4U);
}

// Kept: a name that is no Unicode has no text in UTF-8, and an empty one adds nothing to a path.
TEST_F(OpcPackageModelTest, AddFileBelowADirectoryWhoseNameIsNoUnicodeStoresItAtThePathOfTheDirectoryAboveIt)
{
    show({"/sub/b.txt"});
    const QString half{QChar{0xD800}};
    ASSERT_TRUE(model.addDirectory(half, row("sub")));
    EXPECT_TRUE(add(file("g.txt"), rowNamed(model, half)));
    EXPECT_TRUE(holds(L"/sub/g.txt"));
    EXPECT_EQ(row("g.txt").parent(), rowNamed(model, half));
}

// Kept: the row announced is counted behind the directories, the row itself stands ahead of them.
TEST_F(OpcPackageModelTest, AddFileAnnouncesARowAtTheEndAndAddsItAheadOfTheDirectories)
{
    show({"/a.txt", "/one/b.txt", "/two/c.txt"});
    SignalLog log{model};
    EXPECT_TRUE(add(file("new.txt"), model.partsIndex()));
    EXPECT_EQ(log.take(), "rowsAboutToBeInserted Parts 3-3\nrowsInserted Parts 3-3\n");
    EXPECT_EQ(row("new.txt").row(), 1);
    EXPECT_EQ(dump(model), "Parts\n  a.txt\n  new.txt\n  one\n    b.txt\n  two\n    c.txt\nRelationships\n");
}

TEST_F(OpcPackageModelTest, PersistentIndexesFollowTheirItemsAllTheSame)
{
    show({"/a.txt", "/one/b.txt", "/two/c.txt"});
    std::vector<QPersistentModelIndex> kept;
    for (const char* const name : {"a.txt", "one", "two", "c.txt"})
        kept.emplace_back(row(name));
    ASSERT_TRUE(add(file("new.txt"), model.partsIndex()));
    ASSERT_TRUE(add(file("deep.txt"), row("two")));
    for (std::size_t i = 0; i < kept.size(); ++i) {
        const char* const name = std::array{"a.txt", "one", "two", "c.txt"}[i];
        EXPECT_EQ(kept[i], row(name)) << name;
    }
}

TEST_F(OpcPackageModelTest, AddFileThatThePackageRefusesHasNoRowYetSignalsAnInsertionAndReportsSuccess)
{
    show({"/a.txt", "/sub/b.txt"});
    SignalLog log{model};
    EXPECT_TRUE(add(file("a.txt"), model.partsIndex()));
    EXPECT_EQ(log.take(), "rowsAboutToBeInserted Parts 2-2\nrowsInserted Parts 2-2\n");
    EXPECT_EQ(dump(model), "Parts\n  a.txt\n  sub\n    b.txt\nRelationships\n");
    EXPECT_TRUE(relationshipTargets().empty());
}

// Kept: the part is in the package by then, and nobody takes it out.
TEST_F(OpcPackageModelTest, AddFileThatCannotBeReadLeavesItsPartInThePackageWithoutARow)
{
    show({"/sub/b.txt"});
    SignalLog log{model};
    EXPECT_TRUE(add(toPath(folder / "missing.txt"), model.partsIndex()));
    EXPECT_EQ(log.take(), "rowsAboutToBeInserted Parts 1-1\nrowsInserted Parts 1-1\n");
    EXPECT_EQ(dump(model), "Parts\n  sub\n    b.txt\nRelationships\n");
    EXPECT_TRUE(holds(L"/missing.txt"));
}

// Kept, as above.
TEST_F(OpcPackageModelTest, AddFileThatCannotBeRelatedLeavesItsPartInThePackageWithoutARow)
{
    show({"/sub/b.txt"});
    SignalLog log{model};
    EXPECT_TRUE(model.addFile(file("a.txt"), model.partsIndex(), MIMEType{FileType::text}, model.partsIndex(), {},
                              OpcPackageCompressionType::normal));
    EXPECT_EQ(log.take(), "rowsAboutToBeInserted Parts 1-1\nrowsInserted Parts 1-1\n");
    EXPECT_EQ(dump(model), "Parts\n  sub\n    b.txt\nRelationships\n");
    EXPECT_TRUE(holds(L"/a.txt"));
    EXPECT_TRUE(PackageInspection{*package}.relationships("/").value().empty());
}

TEST_F(OpcPackageModelTest, AddFileBelowAPartIsRefusedAndSilent)
{
    show({"/a.txt"});
    SignalLog log{model};
    const auto result = add(file("b.txt"), row("a.txt"));
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error(), (ErrorCode2{2, opc_error_category()}));
    EXPECT_EQ(add(file("b.txt"), model.relationshipsIndex()).error(), (ErrorCode2{2, opc_error_category()}));
    EXPECT_EQ(log.take(), "");
    EXPECT_FALSE(holds(L"/b.txt"));
}

TEST_F(OpcPackageModelTest, AddFileWithoutAFileNameIsRefusedAndSilent)
{
    show({});
    SignalLog log{model};
    const auto result = add(FilePath2{}, model.partsIndex());
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error(), FilePath2{}.filename().error());
    EXPECT_EQ(log.take(), "");
}

TEST_F(OpcPackageModelTest, AddFileToANullPackageAddsNothing)
{
    model.setPackage(nullptr);
    SignalLog log{model};
    EXPECT_TRUE(add(file("a.txt"), model.partsIndex()));
    EXPECT_EQ(log.take(), "rowsAboutToBeInserted Parts 0-0\nrowsInserted Parts 0-0\n");
    EXPECT_EQ(dump(model), "Parts\nRelationships\n");
}

// Without a package Qt's tester stops at the rows that have rows without end; an added file it stops at because another
// row is there than was announced.
TEST_F(OpcPackageModelTest, HoldsWhatQtAsksOfAModelAsLongAsNoFileIsAdded)
{
    show({});
    const QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
    show({"/a.txt", "/sub/deep/b.txt", "/c.txt"});
    EXPECT_TRUE(model.addDirectory(QStringLiteral("new"), row("sub")));
    model.setPackage(nullptr);
    EXPECT_EQ(dump(model), "Parts\nRelationships\n");
}
