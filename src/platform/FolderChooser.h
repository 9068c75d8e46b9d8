// Port: the user chooses a folder.
#pragma once

#include "platform/Port.h"

#include <string>

namespace sitekeeper {

class FolderChooser : public Port
{
public:
    /// Shows the folder chooser with `title` and the folder `path` selected ("C:\" when `path` is empty) and waits for
    /// the answer. The chooser has no owner: windows that are open can be used meanwhile. Afterwards `path` is the
    /// chosen folder with a "\" at its end, or empty when nothing was chosen: the old value is not kept.
    virtual void Choose(const std::wstring& title, std::wstring& path) = 0;
};

} // namespace sitekeeper
