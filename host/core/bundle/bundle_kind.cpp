#include "host/core/bundle/bundle_kind.h"

#include "host/core/text/text_view.h"

#include <algorithm>
#include <iterator>

namespace Kelvaris::System::IO::Bundle::detail {

namespace {

struct Kind
{
    BundleKind kind;
    std::string_view name;
    std::string_view description;
};

constexpr Kind kinds[] = {
    {BundleKind::content, "content", "a content bundle"},
    {BundleKind::example, "example", "an example bundle"},
    {BundleKind::barrelOfExamples, "barrel-of-examples", "a barrel of examples"},
    {BundleKind::schematic, "schematic", "a schematic bundle"},
    {BundleKind::scriptable, "scriptable", "a scriptable bundle"},
};

} // namespace

std::string_view kindName(BundleKind kind) noexcept
{
    return std::ranges::find(kinds, kind, &Kind::kind)->name;
}

std::optional<BundleKind> kindNamed(std::string_view kindName) noexcept
{
    const auto known = std::ranges::find(kinds, kindName, &Kind::name);
    return known == std::end(kinds) ? std::nullopt : std::optional{known->kind};
}

std::string describedKind(std::string_view kindName)
{
    const auto known = std::ranges::find(kinds, kindName, &Kind::name);
    if (known != std::end(kinds))
        return std::string{known->description};
    return "a bundle of the kind \"" + Text::displayed(kindName) + '"';
}

} // namespace Kelvaris::System::IO::Bundle::detail
