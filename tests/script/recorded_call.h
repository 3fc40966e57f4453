#pragma once

#include "kelvaris/support/func_args.h"
#include "kelvaris/support/func_result.h"

#include <cstdint>
#include <new>
#include <string>
#include <utility>
#include <vector>

/// A host's side of a call that keeps what the function asks for.
class RecordedArgs final : public Kelvaris::FuncArgsMinimal
{
public:
    explicit RecordedArgs(std::vector<std::vector<const char*>> arguments = {}) : m_arguments{std::move(arguments)} {}

    const char* const* strings(int index) const override
    {
        asked.push_back("strings " + std::to_string(index));
        return has(index) ? m_arguments[static_cast<std::size_t>(index)].data() : nullptr;
    }

    std::int64_t argumentCount() const override
    {
        asked.emplace_back("argumentCount");
        return static_cast<std::int64_t>(m_arguments.size());
    }

    std::int64_t count(int index) const override
    {
        asked.push_back("count " + std::to_string(index));
        return has(index) ? static_cast<std::int64_t>(m_arguments[static_cast<std::size_t>(index)].size()) : 0;
    }

    mutable std::vector<std::string> asked;

private:
    bool has(int index) const { return static_cast<std::size_t>(index) < m_arguments.size(); }

    std::vector<std::vector<const char*>> m_arguments;
};

class RecordedResult final : public Kelvaris::FuncResultMinimal
{
public:
    RecordedResult() = default;
    RecordedResult(const RecordedResult&) = delete;
    RecordedResult& operator=(const RecordedResult&) = delete;
    ~RecordedResult() { release(); }

    char** allocateStrings(std::int64_t count) override
    {
        release();
        allocated.push_back(count);
        places.assign(static_cast<std::size_t>(count), nullptr);
        return places.data();
    }

    std::vector<std::int64_t> allocated; ///< the count of each allocation
    std::vector<char*> places;

private:
    void release()
    {
        for (char* place : places)
            ::operator delete(place);
        places.clear();
    }
};
