#include "host/support/call_function.h"

#include <cstdint>
#include <new>
#include <stdexcept>
#include <utility>

namespace Kelvaris {

namespace {

using Texts = std::vector<std::string>;

void requireNumberOfArguments(const RegisteredFunction& function, std::size_t given)
{
    const auto minimum = static_cast<std::size_t>(function.minimum);
    const auto maximum = static_cast<std::size_t>(function.maximum);
    if (minimum <= given && given <= maximum)
        return;
    std::string range = std::to_string(minimum);
    if (minimum != maximum)
        range += " to " + std::to_string(maximum);
    throw std::invalid_argument{function.name + " takes " + range + (maximum == 1 ? " argument" : " arguments") +
                                ", not " + std::to_string(given)};
}

void requireNoNul(const RegisteredFunction& function, const std::vector<Texts>& arguments)
{
    for (std::size_t index = 0; index < arguments.size(); ++index) {
        for (const std::string& text : arguments[index]) {
            if (text.find('\0') != std::string::npos)
                throw std::invalid_argument{"argument " + std::to_string(index + 1) + " of " + function.name +
                                            " holds a NUL character, which no text of a script may hold"};
        }
    }
}

class Arguments final : public FuncArgsMinimal
{
public:
    explicit Arguments(const std::vector<Texts>& arguments)
    {
        m_pointers.reserve(arguments.size());
        for (const Texts& texts : arguments) {
            auto& pointers = m_pointers.emplace_back();
            pointers.reserve(texts.size());
            for (const std::string& text : texts)
                pointers.push_back(text.c_str());
        }
    }

    const char* const* strings(int index) const override { return has(index) ? at(index).data() : nullptr; }

    std::int64_t argumentCount() const override { return static_cast<std::int64_t>(m_pointers.size()); }

    std::int64_t count(int index) const override
    {
        return has(index) ? static_cast<std::int64_t>(at(index).size()) : 0;
    }

private:
    bool has(int index) const { return 0 <= index && index < argumentCount(); }
    const std::vector<const char*>& at(int index) const { return m_pointers[static_cast<std::size_t>(index)]; }

    std::vector<std::vector<const char*>> m_pointers;
};

class Results final : public FuncResultMinimal
{
public:
    Results() = default;
    Results(const Results&) = delete;
    Results& operator=(const Results&) = delete;
    ~Results() { release(); }

    char** allocateStrings(std::int64_t count) override
    {
        if (count < 0)
            throw std::length_error{"a negative number of results"};
        release();
        m_places.assign(static_cast<std::size_t>(count), nullptr);
        return m_places.data();
    }

    Texts texts() const
    {
        Texts texts;
        texts.reserve(m_places.size());
        for (const char* place : m_places)
            texts.emplace_back(place == nullptr ? "" : place);
        return texts;
    }

private:
    void release() noexcept
    {
        for (char* place : m_places)
            ::operator delete(place);
        m_places.clear();
    }

    std::vector<char*> m_places;
};

class CollectedMessages final : public MessageHandler
{
public:
    explicit CollectedMessages(Texts& messages) : m_messages{messages} {}

    void post(const char* message) override { m_messages.emplace_back(message); }

private:
    Texts& m_messages;
};

} // namespace

CallResult callFunction(const RegisteredFunction& function, const std::vector<Texts>& arguments)
{
    requireNumberOfArguments(function, arguments.size());
    requireNoNul(function, arguments);

    const Arguments passed{arguments};
    Results results;
    CallResult outcome;
    outcome.status = function.entry(passed, &results, YRef<MessageHandler>{new CollectedMessages{outcome.messages}});
    outcome.results = results.texts();
    return outcome;
}

} // namespace Kelvaris
