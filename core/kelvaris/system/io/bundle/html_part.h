#pragma once

#include "kelvaris/export.h"
#include "kelvaris/system/io/bundle/abstract_bundle_part.h"

namespace Kelvaris::System::IO::Bundle {

class ExampleBundle;

/// The documentation page of an example.
class KELVARIS_CORE_API HTMLPart : public AbstractBundlePart
{
public:
    HTMLPart(const HTMLPart&);
    HTMLPart(HTMLPart&&) noexcept;
    HTMLPart& operator=(const HTMLPart&);
    HTMLPart& operator=(HTMLPart&&) noexcept;
    ~HTMLPart() override;

private:
    friend class ExampleBundle;

    explicit HTMLPart(const OpcPackaging::OpcPackagePart& part);
};

} // namespace Kelvaris::System::IO::Bundle
