#include "host/core/bundle/bundle_kind.h"

#include <gtest/gtest.h>

using namespace Kelvaris::System::IO::Bundle::detail;

TEST(BundleKind, EveryKindIsDescribedByItsName)
{
    EXPECT_EQ(describedKind(kindName(BundleKind::content)), "a content bundle");
    EXPECT_EQ(describedKind(kindName(BundleKind::example)), "an example bundle");
    EXPECT_EQ(describedKind(kindName(BundleKind::barrelOfExamples)), "a barrel of examples");
    EXPECT_EQ(describedKind(kindName(BundleKind::schematic)), "a schematic bundle");
    EXPECT_EQ(describedKind(kindName(BundleKind::scriptable)), "a scriptable bundle");
}

TEST(BundleKind, AnUnknownKindIsShownSoThatItBreaksNoLine)
{
    EXPECT_EQ(describedKind("new\nkind"), "a bundle of the kind \"new\\x0Akind\"");
}
