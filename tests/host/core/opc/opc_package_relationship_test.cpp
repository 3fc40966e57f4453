#include "kelvaris/system/io/opc_packaging/opc_package_relationship.h"

#include "host/core/opc/package_access.h"
#include "tests/host/core/opc/package_file.h"

#include <gtest/gtest.h>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;
using namespace Kelvaris::System::IO::OpcPackaging;

namespace {

OpcPackageRelationship relationship(std::string source, std::string target,
                                    OpcTargetMode mode = OpcTargetMode::internal)
{
    OpcPackaging::detail::RelationshipRecord record;
    record.source = std::move(source);
    record.id = u8"r1";
    record.type = u8"http://t.example/t";
    record.target = std::move(target);
    record.mode = mode;
    return OpcPackaging::detail::PackageAccess::relationship(
        std::make_shared<OpcPackaging::detail::RelationshipRecord>(std::move(record)));
}

std::string targetOf(const OpcPackageRelationship& of)
{
    return toStdString(of.targetUri().value().text());
}

} // namespace

TEST(OpcPackageRelationship, SourceIsTheRootForThePackageAndThePartOtherwise)
{
    EXPECT_EQ(toStdString(relationship("/", "a").sourceUri().value().toString().value()), "/");
    EXPECT_EQ(toStdString(relationship("/d/a%20b.x", "a").sourceUri().value().toString().value()), "/d/a%20b.x");
}

TEST(OpcPackageRelationship, InternalTargetsAreResolvedAgainstTheSource)
{
    EXPECT_EQ(targetOf(relationship("/", "content/a.txt")), "/content/a.txt");
    EXPECT_EQ(targetOf(relationship("/d/e/a.x", "../b.x")), "/d/b.x");
    EXPECT_EQ(targetOf(relationship("/d/e/a.x", "/b.x#there")), "/b.x#there");
}

TEST(OpcPackageRelationship, ExternalTargetsStandAsTheyStandInTheFile)
{
    EXPECT_EQ(targetOf(relationship("/d/a.x", "mailto:one@ two", OpcTargetMode::external)), "mailto:one@ two");
    EXPECT_EQ(targetOf(relationship("/d/a.x", "../b.x", OpcTargetMode::external)), "../b.x");
}

TEST(OpcPackageRelationship, AnInternalTargetThatIsNoNameIsAnError)
{
    const auto target = relationship("/", "a/%2F/b").targetUri();
    ASSERT_FALSE(target);
    EXPECT_EQ(target.error(), code(OpcError::invalidRelationships));
}

TEST(OpcPackageRelationship, CopiesShareWhatTheyTell)
{
    const OpcPackageRelationship original = relationship("/", "a", OpcTargetMode::external);
    const OpcPackageRelationship copy = original;
    EXPECT_EQ(copy.id(), String2{u8"r1"});
    EXPECT_EQ(copy.type(), String2{u8"http://t.example/t"});
    EXPECT_EQ(copy.targetMode(), OpcTargetMode::external);
}
