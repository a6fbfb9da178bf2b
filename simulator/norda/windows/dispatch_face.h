// The base of the simulated host's COM objects: late-bound objects whose members are listed by name. What a
// face wraps must outlive it unless it shares its ownership.
//
// A fault in a member reaches the caller as an exception of IDispatch with the fault's description and number.
#pragma once

#include "platform/windows/adapters/variant.h"
#include "platform/windows/system/com_ptr.h"
#include "platform/windows/system/counted.h"

#include <functional>
#include <span>
#include <string>
#include <vector>

namespace vellumo::norda
{

// The arguments of one call in the order in which they were written. Asking for one that was not passed faults.
class Arguments
{
public:
    // As IDispatch passes them: the last one first. They stay the caller's.
    explicit Arguments(const DISPPARAMS& parameters)
        : m_reversed(parameters.rgvarg, parameters.cArgs)
    {
    }

    [[nodiscard]] std::size_t Count() const noexcept { return m_reversed.size(); }
    [[nodiscard]] const VARIANT& At(std::size_t index) const;
    [[nodiscard]] host::Value Value(std::size_t index) const { return windows::ToValue(At(index)); }
    [[nodiscard]] std::string Text(std::size_t index) const { return Value(index).ToText(); }
    [[nodiscard]] std::int32_t Integer(std::size_t index) const { return Value(index).ToInteger(); }
    [[nodiscard]] windows::ComPtr<IDispatch> Object(std::size_t index) const { return windows::ToObject(At(index)); }
    // A one-dimensional array of VARIANT, by reference or not.
    [[nodiscard]] std::vector<host::Value> Values(std::size_t index) const;

private:
    std::span<const VARIANT> m_reversed;
};

class DispatchFace : public windows::Counted<IDispatch>
{
public:
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID reserved, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* answer, EXCEPINFO* exception, UINT* badArgument) override;

    // From now on every member of every face of this process has its name with that behind it, and no other; "" takes
    // it away again.
    static void Rename(const wchar_t* behind) noexcept;

    // Faces that somebody still holds, of all kinds together.
    [[nodiscard]] static long Living() noexcept;

    // A call that has been answered.
    struct Call
    {
        DispatchFace& face;
        DISPID member;
        WORD flags;
        const DISPPARAMS& parameters;
        const VARIANT& answer;
    };
    // Hears of every call to any face from now on; empty for nobody. For programs that make the same calls again.
    using Observer = std::function<void(const Call& call)>;
    static void Observe(Observer observer);

    // By which COM was asked for it; all zeros for one that was handed over or came from another.
    [[nodiscard]] const CLSID& Class() const noexcept { return m_class; }
    void SetClass(const CLSID& clsid) noexcept { m_class = clsid; }

    // As fault descriptions have it.
    [[nodiscard]] const wchar_t* Name() const noexcept { return m_name; }

    // The face behind an object of this process; null for any other object.
    [[nodiscard]] static DispatchFace* From(IDispatch* object) noexcept;

protected:
    using Body = std::function<windows::Variant(const Arguments&)>;

    // `name` is what the fault descriptions and the callers see of the object.
    explicit DispatchFace(const wchar_t* name) noexcept;
    ~DispatchFace() override;

    // What the caller gets for an answer.
    [[nodiscard]] virtual windows::Variant Shown(windows::Variant answer) { return answer; }

    // A method or a readable property; `write` makes the property writable, its last argument being the new value.
    void AddMember(const wchar_t* name, Body call, Body write = {});
    // The member, added before, that stands for the object where a plain value is wanted.
    void SetDefault(const wchar_t* name);

private:
    struct Member
    {
        const wchar_t* name;
        Body call;
        Body write;
    };

    [[nodiscard]] void* Find(REFIID iid) noexcept override;
    [[nodiscard]] DISPID IdOf(const wchar_t* name) const;

    const wchar_t* m_name;
    CLSID m_class{};
    std::vector<Member> m_members; // DISPID = position + 1
    DISPID m_default = DISPID_UNKNOWN;
};

// A new face, as the one reference to it.
template <class Face, class... Parts>
[[nodiscard]] windows::ComPtr<IDispatch> MakeFace(Parts&&... parts)
{
    return windows::ComPtr<IDispatch>::Attach(new Face(std::forward<Parts>(parts)...));
}

} // namespace vellumo::norda
