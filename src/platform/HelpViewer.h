// Port: the viewer of the help file.
#pragma once

#include "platform/Port.h"
#include "platform/WindowId.h"

#include <string>

namespace sitekeeper {

class HelpViewer : public Port
{
public:
    /// Opens the help file at `path` on its table of contents, as a window owned by `owner`. What the viewer makes of
    /// the file is not reported; where the system has no viewer, nothing happens.
    virtual void ShowContents(WindowId owner, const std::wstring& path) = 0;

    /// The same on one page: `address` is the help file's path, "::/" and the page's name inside the file.
    virtual void ShowTopic(WindowId owner, const std::wstring& address) = 0;
};

} // namespace sitekeeper
