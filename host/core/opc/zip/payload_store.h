#pragma once

#include "host/core/opc/zip/effort.h"
#include "host/core/opc/zip/payload.h"
#include "host/core/paths/disk/input_file.h"
#include "kelvaris/export.h"
#include "kelvaris/system/error_code2.h"
#include "kelvaris/system/expected.h"

#include <cstddef>
#include <memory>
#include <span>

namespace Kelvaris::System::IO::OpcPackaging::Zip {

/// Takes in the bytes of new entries. Small ones stay in memory up to a budget that all of them share; what goes
/// beyond stands in one temporary file without a name, so that memory does not grow with the files.
///
/// On a machine of several processors all but the smallest are compressed by threads of the store's own while the next
/// one is read. What they may be behind by is bounded, and only the caller's thread touches the disk: an error of the
/// temporary file is told by the call that makes room, which may be the one after.
///
/// A payload may outlive its store. The same bytes and effort always give the same payload, whatever thread made it.
/// Not for use by several threads at once.
class KELVARIS_CORE_API PayloadStore
{
public:
    PayloadStore();
    PayloadStore(const PayloadStore&) = delete;
    PayloadStore& operator=(const PayloadStore&) = delete;
    ~PayloadStore();

    /// @return  the system's error when there is no room for a temporary file
    Expected<PayloadPtr, ErrorCode2> take(std::span<const std::byte> bytes, Effort effort);

    /// Reads `file` to its end, in bounded memory.
    /// @return  core 8 when the file has become shorter than it was when it was opened, the system's error when it
    ///          cannot be read or there is no room for a temporary file
    Expected<PayloadPtr, ErrorCode2> take(const Disk::InputFile& file, Effort effort);

    /// The caller's thread does its share of what waits to be compressed: for a caller that is about to need one
    /// payload after the other, and would wait for each.
    void packAll() noexcept;

    /// No thread of the store runs when this returns.
    void rest() noexcept;

    /// Another number of threads than the machine's processors ask for; for tests.
    void setThreads(unsigned threads) noexcept;

private:
    class Data;

    std::unique_ptr<Data> m_data;
};

} // namespace Kelvaris::System::IO::OpcPackaging::Zip
