#include "tests/bench/windows/recorded_calls.h"

#include "platform/windows/adapters/host_fault.h"
#include "platform/windows/system/text.h"

#include <cwchar>
#include <stdexcept>
#include <string>
#include <utility>

namespace vellumo::bench
{

using norda::DispatchFace;
using windows::ComPtr;

void RecordedCalls::Record(const Roots& roots, const std::function<void()>& work)
{
    m_calls.clear();
    m_objects.clear();
    m_held.clear();
    m_indices.clear();
    m_held = roots;
    m_objects.resize(roots.size());
    m_roots = roots.size();
    DispatchFace::Observe([this](const DispatchFace::Call& call) { Note(call); });
    work();
    DispatchFace::Observe({});
    m_indices.clear();
    m_held.clear();
}

RecordedCalls::Index RecordedCalls::IndexOf(IDispatch* object)
{
    const auto [place, isNew] = m_indices.try_emplace(object, RootLike(object));
    if (isNew && place->second == none)
    {
        place->second = m_objects.size();
        m_held.emplace_back(object);
        m_objects.emplace_back();
        m_objects.back().creation = DispatchFace::From(object)->Class();
    }
    m_objects[place->second].lastCall = m_calls.size();
    return place->second;
}

RecordedCalls::Index RecordedCalls::RootLike(IDispatch* object) const
{
    for (Index root = 0; root < m_roots; ++root)
    {
        if (std::wcscmp(DispatchFace::From(object)->Name(), DispatchFace::From(m_held[root].Get())->Name()) == 0)
        {
            return root;
        }
    }
    return none;
}

void RecordedCalls::Note(const DispatchFace::Call& call)
{
    Call noted{IndexOf(&call.face), call.member, call.flags, {}};
    for (UINT i = 0; i < call.parameters.cArgs; ++i)
    {
        const VARIANT& argument = call.parameters.rgvarg[i];
        const auto object = windows::ToObject(argument);
        // The library itself is handed over as it is.
        noted.arguments.push_back(object && DispatchFace::From(object.Get()) != nullptr
                                      ? Argument{windows::Variant(), IndexOf(object.Get())}
                                      : Argument{windows::Variant(argument)});
    }
    if (const auto object = windows::ToObject(call.answer))
    {
        noted.answer = IndexOf(object.Get());
    }
    m_calls.push_back(std::move(noted));
}

void RecordedCalls::Replay(const Roots& roots, const std::function<void()>& made) const
{
    Roots objects = roots;
    objects.resize(m_objects.size());
    std::vector<VARIANT> arguments;
    for (Index number = 0; number < m_calls.size(); ++number)
    {
        const Call& call = m_calls[number];
        auto& object = objects[call.object];
        if (!object)
        {
            windows::ThrowIfFailed(CoCreateInstance(m_objects[call.object].creation, nullptr, CLSCTX_INPROC_SERVER,
                                                    IID_IDispatch, object.PutVoid()),
                                   "CoCreateInstance");
        }
        arguments.clear();
        for (const Argument& argument : call.arguments)
        {
            arguments.push_back(argument.value.Get());
            if (argument.object != none)
            {
                V_VT(&arguments.back()) = VT_DISPATCH;
                V_DISPATCH(&arguments.back()) = objects[argument.object].Get();
            }
        }
        DISPID put = DISPID_PROPERTYPUT;
        const bool writes = (call.flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
        DISPPARAMS parameters{arguments.data(), writes ? &put : nullptr, static_cast<UINT>(arguments.size()),
                              writes ? 1U : 0U};
        windows::Variant answer;
        EXCEPINFO exception{};
        if (const HRESULT result = object->Invoke(call.member, IID_NULL, LOCALE_USER_DEFAULT, call.flags, &parameters,
                                                  answer.Put(), &exception, nullptr);
            FAILED(result))
        {
            throw std::runtime_error("a call could not be made again: " +
                                     (exception.bstrDescription == nullptr
                                          ? std::to_string(result)
                                          : windows::FromWide(exception.bstrDescription)));
        }
        if (call.answer != none)
        {
            objects[call.answer] = answer.Object();
        }
        for (const Index used : {call.object, call.answer})
        {
            if (used != none && used >= roots.size() && m_objects[used].lastCall == number)
            {
                objects[used].Reset();
            }
        }
        made();
    }
}

} // namespace vellumo::bench
