#include "host/shell/barrel_examples.h"

#include "host/shell/command_output.h"

namespace HostShell {

using namespace Kelvaris::System;
using IO::Bundle::BarrelOfExamplesBundle;
using IO::OpcPackaging::OpcPackageRelationship;

namespace {

FoundExample exampleAt(const BarrelOfExamplesBundle& barrel, const OpcPackageRelationship& relationship)
{
    const auto name =
        barrel.part(relationship).andThen([](const auto& part) { return part.uri(); }).andThen([](const auto& uri) {
            return uri.toString();
        });
    if (!name)
        return name.error();
    auto part = barrel.example(relationship);
    if (!part)
        return part.error();
    return NamedExample{std::move(*part), toText(*name)};
}

} // namespace

Expected<std::vector<FoundExample>, ErrorCode2> examplesOf(const BarrelOfExamplesBundle& barrel)
{
    const auto relationships = barrel.exampleRelationships();
    if (!relationships)
        return relationships.error();
    std::vector<FoundExample> examples;
    IO::OpcPackaging::detail::OpcPackageRelationshipCollectionIteratorSentinel end;
    for (auto relationship = relationships->begin(); relationship != end; ++relationship)
        examples.push_back(exampleAt(barrel, *relationship));
    return examples;
}

} // namespace HostShell
