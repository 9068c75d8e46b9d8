#include "win32/Win32Printer.h"

#include "win32/Handles.h"
#include "win32/WindowIds.h"

#include <windows.h>

#include <commdlg.h>

#include <algorithm>
#include <utility>

namespace sitekeeper {
namespace {

/// All of the text on as many copies as are asked for, and nothing to choose beyond that.
constexpr DWORD DialogStyle = PD_NOSELECTION | PD_NOPAGENUMS | PD_USEDEVMODECOPIESANDCOLLATE | PD_HIDEPRINTTOFILE;
static_assert(DialogStyle == 0x14000C);
constexpr UINT LayOut = DT_WORDBREAK | DT_EXPANDTABS | DT_NOCLIP;
static_assert(LayOut == 0x150);

/// What the dialog answered: the chosen printer's context, and the memory in which the dialog describes the printer.
struct Chosen
{
    UniqueGlobalMemory mode;
    UniqueGlobalMemory names;
    UniqueMemoryDc dc;
};

/// The face that printers have in place of the screen's old one, 10 points high.
UniqueFont PrinterFont(HDC dc)
{
    constexpr int Points = 10;
    constexpr int PointsPerInch = 72;
    constexpr std::wstring_view Face = L"MS Sans Serif";
    LOGFONTW font{}; // weight, character set and quality as the device has them
    font.lfHeight = -::MulDiv(Points, ::GetDeviceCaps(dc, LOGPIXELSY), PointsPerInch);
    font.lfOutPrecision = OUT_TT_PRECIS;
    font.lfPitchAndFamily = FF_SWISS;
    std::copy(Face.begin(), Face.end(), std::begin(font.lfFaceName));
    return UniqueFont(::CreateFontIndirectW(&font));
}

class Win32PrintDocument final : public PrintDocument
{
public:
    explicit Win32PrintDocument(Chosen chosen)
        : m_chosen(std::move(chosen)), m_dc(PreparedDc(m_chosen.dc.get())), m_font(PrinterFont(m_dc)),
          m_selected(m_dc, m_font.get())
    {
        ::SetBkMode(m_dc, OPAQUE);
    }
    Win32PrintDocument(const Win32PrintDocument&) = delete;
    Win32PrintDocument& operator=(const Win32PrintDocument&) = delete;
    ~Win32PrintDocument() override
    {
        if (m_isBegun) {
            ::AbortDoc(m_dc);
        }
    }

    [[nodiscard]] int PageHeight() const override { return ::GetDeviceCaps(m_dc, VERTRES); }

    [[nodiscard]] int Measure(std::wstring_view text) const override
    {
        RECT page = Page(); // anew each time: measuring narrows it to the text
        return ::DrawTextW(m_dc, text.data(), static_cast<int>(text.size()), &page, LayOut | DT_CALCRECT);
    }

    bool Begin(const std::wstring& name) override
    {
        DOCINFOW document{};
        document.cbSize = sizeof document;
        document.lpszDocName = name.c_str();
        m_isBegun = ::StartDocW(m_dc, &document) != 0; // an error is less than 0 and shows at the end of the page
        return m_isBegun;
    }

    void BeginPage() override { ::StartPage(m_dc); }

    void Draw(std::wstring_view text) override
    {
        RECT page = Page();
        ::DrawTextW(m_dc, text.data(), static_cast<int>(text.size()), &page, LayOut);
    }

    bool EndPage() override { return ::EndPage(m_dc) > 0; }

    void End() override
    {
        m_isBegun = false;
        ::EndDoc(m_dc);
    }

    void Abort() override
    {
        m_isBegun = false;
        ::AbortDoc(m_dc);
    }

private:
    /// In device pixels.
    static HDC PreparedDc(HDC dc)
    {
        ::SetMapMode(dc, MM_TEXT);
        return dc;
    }

    [[nodiscard]] RECT Page() const { return {0, 0, ::GetDeviceCaps(m_dc, HORZRES), PageHeight()}; }

    Chosen m_chosen;
    HDC m_dc;
    UniqueFont m_font;
    SelectScope m_selected;
    bool m_isBegun = false;
};

} // namespace

std::unique_ptr<PrintDocument> Win32Printer::Choose(WindowId owner)
{
    const auto show = m_library.Entry<decltype(&::PrintDlgW)>("PrintDlgW");
    if (show == nullptr) {
        return nullptr;
    }
    PRINTDLGW dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = WindowOf(owner);
    dialog.Flags = DialogStyle | PD_RETURNDC;
    const BOOL isConfirmed = show(&dialog);
    Chosen chosen{UniqueGlobalMemory(dialog.hDevMode), UniqueGlobalMemory(dialog.hDevNames),
                  UniqueMemoryDc(dialog.hDC)};
    if (isConfirmed == FALSE || !chosen.dc) {
        return nullptr;
    }
    return std::make_unique<Win32PrintDocument>(std::move(chosen));
}

} // namespace sitekeeper
