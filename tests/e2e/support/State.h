// Everything an administrator's action may change, taken as a whole, so that a journey states what changed and thereby
// that nothing else did.
#pragma once

#include "e2e/support/RegistryAccess.h"
#include "e2e/support/Shortcuts.h"

#include <map>
#include <string>

namespace sitekeeper::e2e {

class State
{
public:
    /// The suite's keys in both hives and AutoCAD's in the machine's, with type and byte count of each value; the files
    /// and folders of the test installation, of the other places it may move to, and of the desktops and Start menus;
    /// shortcuts by content.
    [[nodiscard]] static State Take();

    /// How a value, a shortcut, an empty or another file or a folder (without a "\" at its end) is expected to be
    /// found.
    void Set(Hive hive, const std::wstring& key, const std::wstring& name, const RegistryValue& value);
    void Set(const std::wstring& path, const Shortcut& shortcut);
    void SetEmptyFile(const std::wstring& path);
    void SetFile(const std::wstring& path, const std::string& content);
    void SetFolder(const std::wstring& path);

    /// That a file is expected to be gone.
    void Remove(const std::wstring& path);

    /// What `now` has that this state has not, what it lacks, what it has otherwise; a line for each, empty when the
    /// two are the same.
    [[nodiscard]] std::string ChangesTo(const State& now) const;

private:
    void AddTree(const std::wstring& folder);

    /// Full name to description.
    std::map<std::wstring, std::wstring> m_items;
};

} // namespace sitekeeper::e2e
