// The user-access lists of the suite: who may run which tool. Kept in one file that the suite's tools share.
#pragma once

#include "platform/Platform.h"
#include "settings/InstallationSettings.h"

#include <string>
#include <vector>

namespace sitekeeper {

/// The lists, numbered as the suite's catalogue numbers the tools they are for.
enum class AccessList : int
{
    /// All known users.
    General = 0,
    LedgerComposer = 5,
    SiteKeeper = 7,
    SheetWriter = 8,
    NormKeeper = 9,
    /// Can be read, but not written.
    RecordDesk = 10,
    /// Can be read, but not written.
    AutoCad = 11,
};

/// Whether the general list is collected anew from the network before it is read.
enum class Rebuild
{
    No,
    Yes
};

enum class Admission
{
    Granted,
    Refused
};

/// Reads and writes "UserDatafile.ini" in the data-files folder. Nothing is kept between calls: each opens the file
/// anew, and each change is saved at once, the last one winning. Without a data-files folder lists are empty and
/// nothing is written. A file that cannot be read counts as empty, one that cannot be written loses the change
/// silently. So does one that is there and cannot be read: one list would take the place of all. Only the general list
/// collected anew is saved all the same, alone.
class AccessLists
{
public:
    /// Keeps the references of `platform` and `settings`; they must outlive it. `programPath` is the program's own
    /// path.
    AccessLists(const Platform& platform, const InstallationSettings& settings, std::wstring programPath);

    /// Puts the names of a list into `names` in place of what it held, in the file's order. None for a tool that has no
    /// list. The general list, and no other, is collected anew first where `rebuild` says so, and saved: that asks
    /// every server of the network for its accounts and can take minutes.
    void ReadAccessList(AccessList list, std::vector<std::wstring>& names, Rebuild rebuild) const;

    /// Replaces a list by `names`; none restores access for everyone. Does nothing for a tool whose list is not
    /// written.
    void WriteAccessList(AccessList list, const std::vector<std::wstring>& names) const;

    /// The access test: no user without a name, "Administrator" always, everyone where the list is empty, otherwise
    /// those whom it names. Names are compared without regard to case.
    [[nodiscard]] Admission IsUserAllowed(const std::wstring& userName, AccessList list) const;

private:
    /// Hands on the names of a list, in the file's order, until `take` wants no more (false).
    template <typename Take>
    void WalkAccessList(AccessList list, Rebuild rebuild, Take take) const;
    [[nodiscard]] std::wstring FilePath() const;

    const Platform& m_platform;
    const InstallationSettings& m_settings;
    std::wstring m_programPath;
};

} // namespace sitekeeper
