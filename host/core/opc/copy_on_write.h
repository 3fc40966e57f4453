#pragma once

#include <memory>
#include <utility>

namespace Kelvaris::System::IO::OpcPackaging::detail {

/// A value that several may hold. Who changes it while others hold it gets a copy of its own first.
template <class Value>
class CopyOnWrite
{
public:
    CopyOnWrite() : m_value{std::make_shared<Value>()} {}

    /// @param value  not null
    explicit CopyOnWrite(std::shared_ptr<Value> value) noexcept : m_value{std::move(value)} {}

    const Value& operator*() const noexcept { return *m_value; }
    const Value* operator->() const noexcept { return m_value.get(); }

    Value& toChange()
    {
        if (m_value.use_count() > 1)
            m_value = std::make_shared<Value>(*m_value);
        return *m_value;
    }

private:
    std::shared_ptr<Value> m_value;
};

} // namespace Kelvaris::System::IO::OpcPackaging::detail
