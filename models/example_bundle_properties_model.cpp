#include "models/example_bundle_properties_model.h"

#include "kelvaris/system/qt/text_bridge.h"
#include "models/core_properties.h"

namespace Kelvaris::System::IO::Bundle {

namespace {

constexpr int manufacturerRow = CoreProperties::count;

} // namespace

ExampleBundlePropertiesModel::ExampleBundlePropertiesModel(QObject* parent) : BundlePropertiesModel{parent}
{
    addRow(QStringLiteral("Manufacturer"), {}, manufacturerRow);
}

ExampleBundlePropertiesModel::~ExampleBundlePropertiesModel() = default;

bool ExampleBundlePropertiesModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (index.isValid() && role == Qt::EditRole && index.row() == manufacturerRow) {
        // As with the core properties, a refusal is not reported: the cell keeps what was typed.
        (void)bundle()->setManufacturer(qStringToUTF8(value.toString()).value());
    }
    return BundlePropertiesModel::setData(index, value, role);
}

ExampleBundle* ExampleBundlePropertiesModel::bundle() const
{
    return static_cast<ExampleBundle*>(BundlePropertiesModel::bundle());
}

void ExampleBundlePropertiesModel::updateProperties()
{
    setRowValue(manufacturerRow, utf8ToQString(bundle()->manufacturer().valueOr({})).value());
    BundlePropertiesModel::updateProperties();
}

} // namespace Kelvaris::System::IO::Bundle
