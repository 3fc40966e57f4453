#include "kelvaris/system/io/opc_packaging/opc_package_relationship_collection.h"

#include "host/core/opc/package_access.h"
#include "tests/host/core/opc/package_file.h"
#include "tests/host/core/opc/package_walks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;
using namespace Kelvaris::System::IO::OpcPackaging;
using testing::ElementsAre;
using Sentinel = OpcPackaging::detail::OpcPackageRelationshipCollectionIteratorSentinel;

namespace {

OpcPackageRelationshipCollection collectionOf(std::initializer_list<const char*> targets)
{
    std::vector<OpcPackaging::detail::RelationshipPtr> records;
    for (const char* target : targets) {
        auto record = std::make_shared<OpcPackaging::detail::RelationshipRecord>();
        record->source = "/";
        record->target = target;
        records.push_back(std::move(record));
    }
    return OpcPackaging::detail::PackageAccess::relationships(records);
}

} // namespace

TEST(OpcPackageRelationshipCollection, WithoutElementsBeginsAtItsEnd)
{
    const auto collection = collectionOf({});
    EXPECT_TRUE(collection.begin() == Sentinel{});
    EXPECT_FALSE(collection.begin() != Sentinel{});
}

TEST(OpcPackageRelationshipCollection, WalksItsElementsOnceAndInOrder)
{
    EXPECT_THAT(relationshipLines(collectionOf({"/a", "/b", "/c"})), ElementsAre("  /a", "  /b", "  /c"));
}

TEST(OpcPackageRelationshipCollection, AnElementMayBeMovedOutOfAWalk)
{
    const auto collection = collectionOf({"/a", "/b"});
    auto it = collection.begin();
    const OpcPackageRelationship first{std::move(*it)};
    ++it;
    EXPECT_EQ(toStdString((*it).targetUri().value().text()), "/b");
    EXPECT_EQ(toStdString(first.targetUri().value().text()), "/a");
    EXPECT_THAT(relationshipLines(collection), ElementsAre("  /a", "  /b"));
}
