// Prints the title of each example that is given.

#include <kelvaris/system/file_path2.h>
#include <kelvaris/system/io/bundle/example_bundle.h>

#include <cstdio>
#include <cstring>
#include <string>

using namespace Kelvaris::System;

namespace {

FilePath2 pathOf(const char* argument)
{
    const std::u8string text{argument, argument + std::strlen(argument)};
    return {text.data(), text.size()};
}

bool printTitle(const char* file)
{
    const auto title = IO::Bundle::ExampleBundle::open(pathOf(file)).andThen(&IO::Bundle::ExampleBundle::title);
    if (!title) {
        std::fprintf(stderr, "%s has no title\n", file);
        return false;
    }
    std::puts(reinterpret_cast<const char*>(title->data()));
    return true;
}

} // namespace

int main(int count, char** words)
{
    bool allPrinted = true;
    for (int i = 1; i < count; ++i)
        allPrinted = printTitle(words[i]) && allPrinted;
    return allPrinted ? 0 : 1;
}
