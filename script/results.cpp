#include "script/results.h"

#include <cstddef>
#include <new>
#include <stdexcept>
#include <string>

namespace Script {

using Kelvaris::System::FilePath2;
using Kelvaris::System::String;

namespace {

/// The buffer belongs to the host as soon as it stands in its place.
void fill(char*& place, const String& text)
{
    const std::size_t size = text.size();
    char* buffer = static_cast<char*>(::operator new(size + 1));
    place = buffer;
    buffer[size] = '\0';
    text.byteView().memcpy(buffer, size);
}

} // namespace

void writeResult(const FuncCallFrame& frame, const String& text)
{
    fill(frame.result->allocateStrings(1)[0], text);
}

ResultArray::ResultArray(const FuncCallFrame& frame, std::int64_t count)
    : m_places{frame.result->allocateStrings(count)}, m_count{count}
{
}

void ResultArray::append(const String& text)
{
    if (m_next >= m_count)
        throw std::out_of_range{"result index out of range"};
    fill(m_places[m_next], text);
    ++m_next;
}

String toString(const FilePath2& path)
{
    return std::wstring{path.c_str()};
}

} // namespace Script
