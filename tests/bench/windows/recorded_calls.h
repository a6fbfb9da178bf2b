// The calls that the library makes to the objects of the simulated host, and the same calls made again by as little as
// it takes: no conversions, no look-up of members, nothing looked at.
#pragma once

#include "platform/windows/adapters/variant.h"
#include "platform/windows/system/com_ptr.h"
#include "simulator/norda/windows/dispatch_face.h"

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace vellumo::bench
{

class RecordedCalls
{
public:
    // What the host hands over and the bridge, each of a class of its own; the same at each replay. The library has
    // others of these classes, over the same things.
    using Roots = std::vector<windows::ComPtr<IDispatch>>;

    // Records while `work` runs.
    void Record(const Roots& roots, const std::function<void()>& work);

    // Objects that the library creates by itself are created anew. Each is let go after its last call. `made` hears of
    // every call.
    void Replay(
        const Roots& roots, const std::function<void()>& made = [] {}) const;

    [[nodiscard]] std::size_t Count() const noexcept { return m_calls.size(); }

private:
    using Index = std::size_t;
    static constexpr Index none = static_cast<Index>(-1);

    struct Argument
    {
        windows::Variant value;
        Index object = none; // instead of the value
    };
    struct Call
    {
        Index object;
        DISPID member;
        WORD flags;
        std::vector<Argument> arguments; // as IDispatch has them, the last one first
        Index answer = none;             // an object that nobody had before
    };
    struct Object
    {
        CLSID creation{}; // of one that the library created by itself
        Index lastCall = 0;
    };

    void Note(const norda::DispatchFace::Call& call);
    [[nodiscard]] Index IndexOf(IDispatch* object);
    [[nodiscard]] Index RootLike(IDispatch* object) const;

    std::vector<Call> m_calls;
    std::vector<Object> m_objects;
    std::map<IDispatch*, Index> m_indices; // while recording
    Roots m_held;                          // the roots first; so that no address comes twice
    std::size_t m_roots = 0;
};

} // namespace vellumo::bench
