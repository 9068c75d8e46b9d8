// The folder chooser port on the program's folder browser.
#pragma once

#include "platform/FolderChooser.h"

namespace sitekeeper {

class ShellFolderChooser final : public FolderChooser
{
public:
    void Choose(const std::wstring& title, std::wstring& path) override;
};

} // namespace sitekeeper
