#pragma once

#include "kelvaris/system/io/bundle/example_bundle.h"
#include "models/bundle_properties_model.h"

namespace Kelvaris::System::IO::Bundle {

/// The properties of an example: the core properties, and the manufacturer in row 15.
class ExampleBundlePropertiesModel : public BundlePropertiesModel
{
public:
    explicit ExampleBundlePropertiesModel(QObject* parent = nullptr);
    ~ExampleBundlePropertiesModel() override;

    /// As the base; row 15 sets the manufacturer. A manufacturer that the bundle refuses goes unnoticed.
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

    /// What `setBundle` was given, which must have been an `ExampleBundle`.
    ExampleBundle* bundle() const override;

    void updateProperties() override;
};

} // namespace Kelvaris::System::IO::Bundle
