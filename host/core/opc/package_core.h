#pragma once

#include "host/core/opc/markup/core_properties.h"
#include "host/core/opc/package_parts.h"
#include "host/core/opc/package_relationships.h"
#include "host/core/opc/result.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace Kelvaris::System::IO::OpcPackaging::detail {

/// The core properties part of a package, read on first use.
class PackageCore
{
public:
    /// Both outlive this object.
    PackageCore(PackageParts& parts, PackageRelationships& relationships) noexcept
        : m_parts{parts}, m_relationships{relationships}
    {
    }

    /// @return  nothing when the package does not hold the property; opc 15, 16, 19, 20, 23 when the part, or what
    ///          leads to it, breaks a rule
    Result<std::optional<std::string>> text(Markup::CoreProperty property);

    /// The empty text removes the property. A package gets the part with the first property that is set.
    Result<> set(Markup::CoreProperty property, std::string_view text);

    /// Reads the part if that has not been done.
    Result<> load();

    /// The name of the part; empty when there is none. After `load`.
    std::string partName() const;

    /// Adds the part to what a save must write anew, if it has changed.
    void generate(PackageItems::Generated& generated) const;

private:
    struct State
    {
        Markup::CoreProperties document;
        PartPtr part;             ///< null when there is none
        std::string danglingName; ///< where a relationship leads to a part that is not there
    };

    Result<State> read();
    Result<State> readFrom(const Markup::Relationship& relationship);
    Result<State> readPart(const PartPtr& part) const;
    Result<PartPtr> partOfType() const;
    Result<State> stateToChange() const;
    Result<> relatePart(State& state);
    Result<> createPart(State& state);
    Result<PartPtr> createPartOfFreeName();

    PackageParts& m_parts;
    PackageRelationships& m_relationships;
    std::unique_ptr<State> m_state;
};

} // namespace Kelvaris::System::IO::OpcPackaging::detail
