#pragma once

#include "kelvaris/export.h"
#include "kelvaris/system/io/bundle/abstract_bundle.h"
#include "kelvaris/system/io/bundle/example_part.h"

#include <cstdint>

namespace Kelvaris::System::IO::Bundle {

/// A package of example bundles, each stored as one part.
class KELVARIS_CORE_API BarrelOfExamplesBundle : public AbstractBundle
{
public:
    /// A new, empty barrel.
    static Expected<BarrelOfExamplesBundle, ErrorCode2> create();

    /// @return  bundle 1 when the file is no barrel, otherwise as `OpcPackage::open`
    static Expected<BarrelOfExamplesBundle, ErrorCode2> open(const FilePath2& path);

    BarrelOfExamplesBundle(BarrelOfExamplesBundle&&) noexcept;
    BarrelOfExamplesBundle& operator=(BarrelOfExamplesBundle&&) noexcept;
    ~BarrelOfExamplesBundle() override;

    /// Stores an example bundle's file as a part, byte for byte, without compressing it again. The bytes are taken in
    /// now.
    /// @return  bundle 7, with the reason, when the file is no example bundle that can be opened, opc 3, 4 or 5 when
    /// the name
    ///          will not do, the system's error when the file cannot be read; the barrel is as it was then
    Expected<ExamplePart, ErrorCode2> addExample(const FilePath2& exampleFile,
                                                 const OpcPackaging::OpcPackagePartUri& uri);

    /// @return  opc 1 when there is no such part
    Expected<ExamplePart, ErrorCode2> example(const OpcPackaging::OpcPackagePartUri& uri) const;

    /// @return  opc 1 when there is no such part, opc 22 when the target lies outside the barrel
    Expected<ExamplePart, ErrorCode2> example(const OpcPackaging::OpcPackageRelationship& relationship) const;

    /// One for each example, in the order in which they were added.
    Expected<OpcPackaging::OpcPackageRelationshipCollection, ErrorCode2> exampleRelationships() const;

    /// The count of examples; 0 when the relationships cannot be read.
    std::uint64_t numberExamples() const;

private:
    explicit BarrelOfExamplesBundle(OpcPackaging::OpcPackage package) noexcept;
};

} // namespace Kelvaris::System::IO::Bundle
