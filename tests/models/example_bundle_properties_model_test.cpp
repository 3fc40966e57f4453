#include "models/example_bundle_properties_model.h"

#include "kelvaris/system/bad_expected_access.h"
#include "tests/models/package_fixtures.h"
#include "tests/models/signal_log.h"
#include "tests/support/model_dump.h"

#include <QtTest/QAbstractItemModelTester>

#include <gtest/gtest.h>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO::Bundle;

namespace {

constexpr int manufacturer = 15;

class ExampleBundlePropertiesModelTest : public testing::Test
{
protected:
    ExampleBundlePropertiesModelTest() { model.setBundle(bundle); }

    QModelIndex cell() const { return model.index(manufacturer, 1); }

    std::shared_ptr<ExampleBundle> bundle = exampleBundle({});
    ExampleBundlePropertiesModel model;
};

} // namespace

TEST(ExampleBundlePropertiesModel, HasTheManufacturerBehindTheFifteenProperties)
{
    const ExampleBundlePropertiesModel model;
    EXPECT_EQ(model.rowCount(), 16);
    EXPECT_EQ(model.index(14, 0).data().toString(), QStringLiteral("Version"));
    EXPECT_EQ(model.index(manufacturer, 0).data().toString(), QStringLiteral("Manufacturer"));
    EXPECT_EQ(model.index(manufacturer, 1).data().toString(), QString{});
    EXPECT_TRUE(model.flags(model.index(manufacturer, 1)) & Qt::ItemIsEditable);
    EXPECT_FALSE(model.index(16, 0).isValid());
}

TEST_F(ExampleBundlePropertiesModelTest, GivesTheBundleAsAnExample)
{
    const ExampleBundle* const narrowed = model.bundle();
    EXPECT_EQ(narrowed, bundle.get());
}

TEST_F(ExampleBundlePropertiesModelTest, ReadsTheManufacturerAheadOfTheOthers)
{
    SignalLog log{model};
    model.updateProperties();
    const std::string lines = log.take();
    EXPECT_EQ(lines.substr(0, lines.find('\n', lines.find('\n') + 1) + 1),
              "dataChanged 15,0 15,0 roles 0\ndataChanged 0,0 0,0 roles 0\n");
}

TEST_F(ExampleBundlePropertiesModelTest, ShowsTheManufacturerOfTheBundle)
{
    bundle->setManufacturer(u8"Müller & Söhne").value();
    model.setBundle(bundle);
    EXPECT_EQ(cell().data().toString(), QStringLiteral("Müller & Söhne"));
}

TEST_F(ExampleBundlePropertiesModelTest, AnExampleWithoutAManufacturerShowsAnEmptyCell)
{
    ASSERT_FALSE(bundle->manufacturer());
    EXPECT_EQ(cell().data().toString(), QString{});
}

TEST_F(ExampleBundlePropertiesModelTest, AnEditSetsTheManufacturerOfTheBundle)
{
    SignalLog log{model};
    EXPECT_TRUE(model.setData(cell(), QStringLiteral("Acme")));
    EXPECT_EQ(log.take(), "dataChanged 15,1 15,1 roles 2\n");
    EXPECT_EQ(bundle->manufacturer().value(), String2{u8"Acme"});
}

TEST_F(ExampleBundlePropertiesModelTest, AnEditInAnotherRoleSetsNothing)
{
    EXPECT_FALSE(model.setData(cell(), QStringLiteral("Acme"), Qt::DisplayRole));
    EXPECT_FALSE(model.setData({}, QStringLiteral("Acme")));
    EXPECT_FALSE(bundle->manufacturer());
}

TEST_F(ExampleBundlePropertiesModelTest, TheOtherRowsAreEditedAsEver)
{
    EXPECT_TRUE(model.setData(model.index(13, 1), QStringLiteral("a title")));
    EXPECT_EQ(bundle->title().value(), String2{u8"a title"});
    EXPECT_FALSE(bundle->manufacturer());
}

TEST_F(ExampleBundlePropertiesModelTest, AManufacturerThatTheBundleRefusesIsShownAndReportedAsSuccess)
{
    // a character that no XML can hold
    ASSERT_FALSE(bundle->setManufacturer(u8"\u0001"));
    SignalLog log{model};
    EXPECT_TRUE(model.setData(cell(), QStringLiteral("\u0001")));
    EXPECT_EQ(log.take(), "dataChanged 15,1 15,1 roles 2\n");
    EXPECT_EQ(cell().data().toString(), QStringLiteral("\u0001"));
    EXPECT_FALSE(bundle->manufacturer());
}

TEST_F(ExampleBundlePropertiesModelTest, AManufacturerThatIsNoUnicodeThrowsAheadOfAnyChange)
{
    SignalLog log{model};
    EXPECT_THROW(model.setData(cell(), QString{QChar{0xDC00}}), bad_expected_access<ErrorCode2>);
    EXPECT_EQ(log.take(), "");
    EXPECT_EQ(cell().data().toString(), QString{});
    EXPECT_FALSE(bundle->manufacturer());
}

TEST_F(ExampleBundlePropertiesModelTest, HoldsWhatQtAsksOfAModel)
{
    const QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
    model.setData(cell(), QStringLiteral("Acme"));
    model.setBundle(exampleBundle({}));
    EXPECT_EQ(cell().data().toString(), QString{});
}
