#pragma once

#include "kelvaris/export.h"
#include "kelvaris/system/io/bundle/abstract_bundle.h"
#include "kelvaris/system/io/bundle/script_part.h"

namespace Kelvaris::System::IO::Bundle {

/// A bundle with a script and content parts.
class KELVARIS_CORE_API ScriptableBundle : public AbstractBundle
{
public:
    /// A new, empty bundle.
    static Expected<ScriptableBundle, ErrorCode2> create();

    /// @return  bundle 1 when the file is no scriptable bundle, otherwise as `OpcPackage::open`
    static Expected<ScriptableBundle, ErrorCode2> open(const FilePath2& path);

    ScriptableBundle(ScriptableBundle&&) noexcept;
    ScriptableBundle& operator=(ScriptableBundle&&) noexcept;
    ~ScriptableBundle() override;

    /// Stores the script text, in the place of the one before. The empty text is a script too.
    Expected<ScriptPart, ErrorCode2> setScript(const String2& script);

private:
    explicit ScriptableBundle(OpcPackaging::OpcPackage package) noexcept;
};

} // namespace Kelvaris::System::IO::Bundle
