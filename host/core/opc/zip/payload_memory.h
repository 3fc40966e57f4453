#pragma once

#include "host/core/opc/zip/byte_source.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace Kelvaris::System::IO::OpcPackaging::Zip {

/// What the payloads of a store hold in memory, up to a budget. Small ones share blocks: they are many, and memory that
/// each asks for alone costs more than reading its file.
class PayloadMemory
{
public:
    PayloadMemory();
    ~PayloadMemory();
    PayloadMemory(const PayloadMemory&) = delete;
    PayloadMemory& operator=(const PayloadMemory&) = delete;

    /// @return  a copy, which may outlive this object; null when the budget is used up
    ByteSourcePtr keep(std::span<const std::byte> bytes);

    /// The same without a copy of what is large.
    /// @param bytes  in memory
    ByteSourcePtr keep(const ByteSourcePtr& bytes);

private:
    class Block;

    bool addBlock(std::size_t least);
    bool hasRoom(std::uint64_t size) const noexcept;
    ByteSourcePtr keepInBlock(std::span<const std::byte> bytes);

    std::shared_ptr<std::size_t> m_used = std::make_shared<std::size_t>(0);
    std::shared_ptr<Block> m_last;
};

} // namespace Kelvaris::System::IO::OpcPackaging::Zip
