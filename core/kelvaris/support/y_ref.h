#pragma once

#include <cstdint>
#include <utility>

namespace Kelvaris {

/// A counted reference by value: it deletes the `T` with the last reference to it.
///
/// The count is a plain integer, so all references to one object stay on one thread. `T` has a virtual
/// destructor or is the object's own type.
///
///     YRef<MessageHandler> messages{new ConsoleMessages};
///     entry(args, &result, messages);   // the callee holds and releases a reference of its own
template <class T>
class YRef
{
public:
    /// Takes over `object`, which may be null.
    explicit YRef(T* object = nullptr) : m_block{new Block{object, 1}} {}

    YRef(const YRef& other) noexcept : m_block{other.m_block} { ++m_block->count; }

    YRef& operator=(const YRef& other) noexcept
    {
        YRef copy{other};
        std::swap(m_block, copy.m_block);
        return *this;
    }

    ~YRef()
    {
        if (--m_block->count > 0)
            return;
        delete m_block->object;
        delete m_block;
    }

    T* get() const noexcept { return m_block->object; }
    T* operator->() const noexcept { return m_block->object; }
    explicit operator bool() const noexcept { return m_block->object != nullptr; }

private:
    struct Block
    {
        T* object;
        std::int32_t count;
    };

    Block* m_block;
};

} // namespace Kelvaris
