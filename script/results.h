#pragma once

#include "kelvaris/system/file_path2.h"
#include "kelvaris/system/string.h"
#include "script/func_call_frame.h"

#include <cstdint>

namespace Script {

/// Gives the call one result.
void writeResult(const FuncCallFrame& frame, const Kelvaris::System::String& text);

/// The results of a call that gives an array. The host is asked for the places once, for none as well.
class ResultArray
{
public:
    ResultArray(const FuncCallFrame& frame, std::int64_t count);

    /// Fills the next place.
    /// @throws std::out_of_range  all places are filled: "result index out of range"
    void append(const Kelvaris::System::String& text);

private:
    char** m_places;
    std::int64_t m_count;
    std::int64_t m_next = 0;
};

/// The path's text. @throws SystemError  with core 5 when it is not valid Unicode
Kelvaris::System::String toString(const Kelvaris::System::FilePath2& path);

} // namespace Script
