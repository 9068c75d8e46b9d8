#include "frame/AccessibleName.h"

#include "win32/Handles.h"
#include "win32/SystemLibrary.h"

#include <oleacc.h>
#include <oleauto.h>

#include <atomic>
#include <new>
#include <utility>

namespace sitekeeper {
namespace {

using CreateStandardObject = decltype(&::CreateStdAccessibleObject);
using MakeAnswer = decltype(&::LresultFromObject);
using AllocateText = decltype(&::SysAllocStringLen);

/// The system's object of a control under another name. It belongs to whoever holds references to it, and nobody else
/// may destroy it.
class NamedObject final : public IAccessible // NOLINT(cppcoreguidelines-virtual-class-destructor)
{
public:
    NamedObject(HWND control, std::wstring name) : m_name(std::move(name))
    {
        const auto create = m_library.Entry<CreateStandardObject>("CreateStdAccessibleObject");
        if (create != nullptr) {
            create(control, OBJID_CLIENT, IID_IAccessible, reinterpret_cast<void**>(m_standard.put()));
        }
    }
    NamedObject(const NamedObject&) = delete;
    NamedObject& operator=(const NamedObject&) = delete;

    [[nodiscard]] LRESULT Answer(WPARAM request)
    {
        const auto make = m_library.Entry<MakeAnswer>("LresultFromObject");
        return m_standard && make != nullptr ? make(IID_IAccessible, request, this) : 0;
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override
    {
        if (id != IID_IUnknown && id != IID_IDispatch && id != IID_IAccessible) {
            return m_standard->QueryInterface(id, object); // its window, its items
        }
        *object = static_cast<IAccessible*>(this);
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
    ULONG STDMETHODCALLTYPE Release() override
    {
        const ULONG left = --m_references;
        if (left == 0) {
            delete this;
        }
        return left;
    }

    HRESULT STDMETHODCALLTYPE get_accName(VARIANT child, BSTR* name) override
    {
        if (child.vt != VT_I4 || child.lVal != CHILDID_SELF) {
            return m_standard->get_accName(child, name);
        }
        const auto allocate = m_texts.Entry<AllocateText>("SysAllocStringLen");
        *name = allocate != nullptr ? allocate(m_name.data(), static_cast<UINT>(m_name.size())) : nullptr;
        return *name != nullptr ? S_OK : E_OUTOFMEMORY;
    }

    // The rest is the control's as it is.
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override { return m_standard->GetTypeInfoCount(count); }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** information) override
    {
        return m_standard->GetTypeInfo(index, locale, information);
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) override
    {
        return m_standard->GetIDsOfNames(reserved, names, count, locale, ids);
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID reserved, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT* wrong) override
    {
        // By number or by interface, a name is the same name.
        if (member == DISPID_ACC_NAME && (flags & DISPATCH_PROPERTYGET) != 0 && result != nullptr &&
            (parameters->cArgs == 0 || parameters->rgvarg[0].vt == VT_I4)) {
            VARIANT self{};
            self.vt = VT_I4;
            result->vt = VT_BSTR;
            return get_accName(parameters->cArgs == 0 ? self : parameters->rgvarg[0], &result->bstrVal);
        }
        return m_standard->Invoke(member, reserved, locale, flags, parameters, result, exception, wrong);
    }
    HRESULT STDMETHODCALLTYPE get_accParent(IDispatch** parent) override { return m_standard->get_accParent(parent); }
    HRESULT STDMETHODCALLTYPE get_accChildCount(long* count) override { return m_standard->get_accChildCount(count); }
    HRESULT STDMETHODCALLTYPE get_accChild(VARIANT child, IDispatch** object) override
    {
        return m_standard->get_accChild(child, object);
    }
    HRESULT STDMETHODCALLTYPE get_accValue(VARIANT child, BSTR* value) override
    {
        return m_standard->get_accValue(child, value);
    }
    HRESULT STDMETHODCALLTYPE get_accDescription(VARIANT child, BSTR* description) override
    {
        return m_standard->get_accDescription(child, description);
    }
    HRESULT STDMETHODCALLTYPE get_accRole(VARIANT child, VARIANT* role) override
    {
        return m_standard->get_accRole(child, role);
    }
    HRESULT STDMETHODCALLTYPE get_accState(VARIANT child, VARIANT* state) override
    {
        return m_standard->get_accState(child, state);
    }
    HRESULT STDMETHODCALLTYPE get_accHelp(VARIANT child, BSTR* help) override
    {
        return m_standard->get_accHelp(child, help);
    }
    HRESULT STDMETHODCALLTYPE get_accHelpTopic(BSTR* file, VARIANT child, long* topic) override
    {
        return m_standard->get_accHelpTopic(file, child, topic);
    }
    HRESULT STDMETHODCALLTYPE get_accKeyboardShortcut(VARIANT child, BSTR* key) override
    {
        return m_standard->get_accKeyboardShortcut(child, key);
    }
    HRESULT STDMETHODCALLTYPE get_accFocus(VARIANT* child) override { return m_standard->get_accFocus(child); }
    HRESULT STDMETHODCALLTYPE get_accSelection(VARIANT* children) override
    {
        return m_standard->get_accSelection(children);
    }
    HRESULT STDMETHODCALLTYPE get_accDefaultAction(VARIANT child, BSTR* action) override
    {
        return m_standard->get_accDefaultAction(child, action);
    }
    HRESULT STDMETHODCALLTYPE accSelect(long flags, VARIANT child) override
    {
        return m_standard->accSelect(flags, child);
    }
    HRESULT STDMETHODCALLTYPE accLocation(long* left, long* top, long* width, long* height, VARIANT child) override
    {
        return m_standard->accLocation(left, top, width, height, child);
    }
    HRESULT STDMETHODCALLTYPE accNavigate(long direction, VARIANT start, VARIANT* end) override
    {
        return m_standard->accNavigate(direction, start, end);
    }
    HRESULT STDMETHODCALLTYPE accHitTest(long left, long top, VARIANT* child) override
    {
        return m_standard->accHitTest(left, top, child);
    }
    HRESULT STDMETHODCALLTYPE accDoDefaultAction(VARIANT child) override
    {
        return m_standard->accDoDefaultAction(child);
    }
    HRESULT STDMETHODCALLTYPE put_accName(VARIANT child, BSTR name) override
    {
        return m_standard->put_accName(child, name);
    }
    HRESULT STDMETHODCALLTYPE put_accValue(VARIANT child, BSTR value) override
    {
        return m_standard->put_accValue(child, value);
    }

private:
    ~NamedObject() = default;

    SystemLibrary m_texts{L"oleaut32.dll"};
    SystemLibrary m_library{L"oleacc.dll"}; // its code is in use until the object below is gone
    ComPtr<IAccessible> m_standard;
    const std::wstring m_name;
    std::atomic<ULONG> m_references{1};
};

} // namespace

LRESULT AnswerWithName(HWND control, WPARAM request, const std::wstring& name) noexcept
{
    try {
        ComPtr<NamedObject> object;
        *object.put() = new NamedObject(control, name); // NOLINT(cppcoreguidelines-owning-memory): it owns itself
        return object->Answer(request);
    } catch (const std::bad_alloc&) {
        return 0;
    }
}

} // namespace sitekeeper
