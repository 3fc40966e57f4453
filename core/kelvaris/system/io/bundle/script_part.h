#pragma once

#include "kelvaris/export.h"
#include "kelvaris/system/io/bundle/abstract_bundle_part.h"

namespace Kelvaris::System::IO::Bundle {

class ScriptableBundle;

/// The script of a scriptable bundle.
class KELVARIS_CORE_API ScriptPart : public AbstractBundlePart
{
public:
    ScriptPart(const ScriptPart&);
    ScriptPart(ScriptPart&&) noexcept;
    ScriptPart& operator=(const ScriptPart&);
    ScriptPart& operator=(ScriptPart&&) noexcept;
    ~ScriptPart() override;

private:
    friend class ScriptableBundle;

    explicit ScriptPart(const OpcPackaging::OpcPackagePart& part);
};

} // namespace Kelvaris::System::IO::Bundle
