#include "support/TestPrinter.h"

#include <windows.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <winspool.h>

namespace sitekeeper {
namespace {

namespace fs = std::filesystem;

constexpr const wchar_t* DriverName = L"SiteKeeper test driver";
/// Where the system keeps the user's default printer.
constexpr const wchar_t* DefaultKey = L"Software\\Microsoft\\Windows NT\\CurrentVersion\\Windows";

/// What the driver must know of the device: a level 3 PostScript printer with A4 paper, whose fonts go into the
/// document as they are, so that the text can be read back.
constexpr const char* Description = R"ppd(*PPD-Adobe: "4.3"
*FormatVersion: "4.3"
*FileVersion: "1.0"
*LanguageVersion: English
*LanguageEncoding: ISOLatin1
*PCFileName: "SKTEST.PPD"
*Manufacturer: "Test"
*Product: "(Test)"
*ModelName: "Test PostScript"
*ShortNickName: "Test PostScript"
*NickName: "Test PostScript"
*PSVersion: "(3010.000) 0"
*LanguageLevel: "3"
*ColorDevice: False
*DefaultColorSpace: Gray
*TTRasterizer: Type42
*DefaultResolution: 300dpi
*Resolution 300dpi: "<</HWResolution[300 300]>>setpagedevice"
*OpenUI *PageSize/Page Size: PickOne
*OrderDependency: 10 AnySetup *PageSize
*DefaultPageSize: A4
*PageSize A4: "<</PageSize[595 842]/ImagingBBox null>>setpagedevice"
*CloseUI: *PageSize
*OpenUI *PageRegion: PickOne
*OrderDependency: 10 AnySetup *PageRegion
*DefaultPageRegion: A4
*PageRegion A4: "<</PageSize[595 842]/ImagingBBox null>>setpagedevice"
*CloseUI: *PageRegion
*DefaultImageableArea: A4
*ImageableArea A4: "18 18 577 824"
*DefaultPaperDimension: A4
*PaperDimension A4: "595 842"
*DefaultFont: Helvetica
*Font Helvetica: Standard "(001.006S)" Standard ROM
)ppd";

void Require(bool isDone, const char* step)
{
    if (!isDone) {
        throw std::runtime_error(std::string(step) + ": error " + std::to_string(::GetLastError()));
    }
}

fs::path DescriptionFile()
{
    std::array<wchar_t, MAX_PATH> folder{};
    DWORD needed = 0;
    Require(::GetPrinterDriverDirectoryW(nullptr, nullptr, 1, reinterpret_cast<BYTE*>(folder.data()), sizeof folder,
                                         &needed) != FALSE,
            "the folder of printer drivers");
    return fs::path(folder.data()) / L"3" / L"SiteKeeperTest.ppd";
}

/// A port by the name of a file as Wine's own spooler takes it: the system's below Wine.
std::wstring PortOf(const std::wstring& file)
{
    using Translate = char*(CDECL*)(const wchar_t*);
    const auto translate = reinterpret_cast<Translate>(
        reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(L"kernel32.dll"), "wine_get_unix_file_name")));
    Require(translate != nullptr, "a port that leads into a file");
    char* const path = translate(file.c_str());
    Require(path != nullptr, "the file's own path");
    std::wstring port(MAX_PATH, L'\0');
    port.resize(static_cast<std::size_t>(
        ::MultiByteToWideChar(CP_UTF8, 0, path, -1, port.data(), static_cast<int>(port.size()))));
    ::HeapFree(::GetProcessHeap(), 0, path);
    Require(port.size() > 1, "the file's path as text");
    port.pop_back(); // the terminator
    return port;
}

std::wstring DefaultPrinter()
{
    std::array<wchar_t, MAX_PATH> name{};
    DWORD size = MAX_PATH;
    return ::GetDefaultPrinterW(name.data(), &size) != FALSE ? name.data() : L"";
}

void AddDriver()
{
    const fs::path description = DescriptionFile();
    std::error_code ignored; // a missing folder shows when the file is written
    fs::create_directories(description.parent_path(), ignored);
    std::ofstream file(description, std::ios::binary);
    file << Description;
    file.close();
    Require(!file.fail(), "the driver's description");
    std::wstring name = DriverName;
    std::wstring program = L"wineps.drv";
    std::wstring data = description.wstring();
    std::wstring type = L"RAW";
    DRIVER_INFO_3W driver{};
    driver.cVersion = 3;
    driver.pName = name.data();
    driver.pDriverPath = program.data();
    driver.pDataFile = data.data();
    driver.pConfigFile = program.data();
    driver.pDefaultDataType = type.data();
    Require(::AddPrinterDriverExW(nullptr, 3, reinterpret_cast<BYTE*>(&driver),
                                  APD_COPY_NEW_FILES | APD_COPY_FROM_DIRECTORY) != FALSE,
            "the printer's driver");
}

void AddQueue(std::wstring port)
{
    std::wstring name = TestPrinter::Name;
    std::wstring driver = DriverName;
    std::wstring processor = L"WinPrint";
    std::wstring type = L"RAW";
    PRINTER_INFO_2W queue{};
    queue.pPrinterName = name.data();
    queue.pPortName = port.data();
    queue.pDriverName = driver.data();
    queue.pPrintProcessor = processor.data();
    queue.pDatatype = type.data();
    queue.Attributes = PRINTER_ATTRIBUTE_LOCAL;
    const HANDLE printer = ::AddPrinterW(nullptr, 2, reinterpret_cast<BYTE*>(&queue));
    Require(printer != nullptr, "the printer");
    ::ClosePrinter(printer);
}

void RemoveAll()
{
    std::wstring name = TestPrinter::Name;
    PRINTER_DEFAULTSW rights{nullptr, nullptr, PRINTER_ALL_ACCESS};
    HANDLE printer = nullptr;
    if (::OpenPrinterW(name.data(), &printer, &rights) != FALSE) {
        ::DeletePrinter(printer);
        ::ClosePrinter(printer);
    }
    std::wstring driver = DriverName;
    ::DeletePrinterDriverExW(nullptr, nullptr, driver.data(), 0, 0);
    std::error_code ignored; // there may be none
    fs::remove(DescriptionFile(), ignored);
}

} // namespace

TestPrinter::TestPrinter(const std::wstring& file)
{
    RemoveAll();
    m_formerDefault = DefaultPrinter();
    try {
        AddDriver();
        AddQueue(PortOf(file));
        Require(::SetDefaultPrinterW(Name) != FALSE, "the default printer");
    } catch (...) {
        RemoveAll();
        throw;
    }
}

TestPrinter::~TestPrinter()
{
    RemoveAll();
    if (m_formerDefault.empty() || ::SetDefaultPrinterW(m_formerDefault.c_str()) == FALSE) {
        ::RegDeleteKeyValueW(HKEY_CURRENT_USER, DefaultKey, L"Device"); // nothing else takes a default printer back
    }
}

int CountPages(const std::string& content)
{
    constexpr std::string_view Mark = "\n%%Page: ";
    int count = 0;
    for (std::size_t place = content.find(Mark); place != std::string::npos; place = content.find(Mark, place + 1)) {
        ++count;
    }
    return count;
}

} // namespace sitekeeper
