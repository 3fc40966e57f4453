#pragma once

#include "kelvaris/export.h"
#include "kelvaris/system/io/bundle/abstract_bundle_part.h"
#include "kelvaris/system/io/bundle/example_bundle.h"

namespace Kelvaris::System::IO::Bundle {

class BarrelOfExamplesBundle;

/// An example inside a barrel. It stays usable after its barrel is gone.
///
/// `package().packageProperties()` gives the properties of the example inside. When the part's bytes are no package it
/// gives an empty properties object all the same, so that a barrel with one broken example can be shown. What is set
/// there changes the handle's view of the example and not the barrel.
class KELVARIS_CORE_API ExamplePart : public AbstractBundlePart
{
public:
    ExamplePart(const ExamplePart&);
    ExamplePart(ExamplePart&&) noexcept;
    ExamplePart& operator=(const ExamplePart&);
    ExamplePart& operator=(ExamplePart&&) noexcept;
    ~ExamplePart() override;

    /// Opens the example in its place: as a window of the barrel's file when it is stored, in memory when it is
    /// compressed.
    /// @return  bundle 1 when it is a bundle of another kind, otherwise as `OpcPackage::open`, with the barrel's file
    /// and the part
    Expected<ExampleBundle, ErrorCode2> bundle() const;

private:
    friend class BarrelOfExamplesBundle;

    explicit ExamplePart(const OpcPackaging::OpcPackagePart& part);
};

} // namespace Kelvaris::System::IO::Bundle
