// Names of the product and of its places. Every other file takes them from here.
#pragma once

namespace sitekeeper {

/// The product's title: caption of messages that stand for the whole suite, and part of folder names.
inline constexpr const wchar_t* ProductTitle = L"LX Plus 2023";

/// What fills the "%s" of the suite's program and library file names in this 64-bit build.
inline constexpr const wchar_t* PlatformSuffix = L"64";

/// The maker's folder below the system's shared folders, and below the programs folder of the Start menu.
inline constexpr const wchar_t* MakerName = L"ORIVEL";

/// The suite's machine-wide installation key, below HKEY_LOCAL_MACHINE.
inline constexpr const wchar_t* SuiteKey = L"Software\\ORIVEL\\LX Plus\\2023";

/// What the application object's registry profile is named by; its root is below HKEY_CURRENT_USER.
inline constexpr const wchar_t* ProfileRegistryKey = L"ORIVEL\\LX Plus\\2023";

} // namespace sitekeeper
