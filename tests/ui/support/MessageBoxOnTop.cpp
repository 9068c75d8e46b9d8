#include "support/MessageBoxOnTop.h"

#include "support/DialogPage.h"

namespace sitekeeper {
namespace {

constexpr int TextControl = 0xFFFF; // the system's number of a message box's text

} // namespace

std::optional<SeenMessageBox> MessageBoxOnTop()
{
    const DialogPage page = DialogPage::OnTop();
    if (!page.Has(TextControl)) {
        return std::nullopt;
    }
    return SeenMessageBox{page.Window(), ::GetWindow(page.Window(), GW_OWNER), page.Title(), page.Text(TextControl)};
}

bool Answer(const SeenMessageBox& box, int button)
{
    return ::GetDlgItem(box.window, button) != nullptr &&
           ::PostMessageW(box.window, WM_COMMAND, static_cast<WPARAM>(button), 0) != FALSE;
}

DriverStep AnswerMessageBox(int button, SeenMessageBox& seen)
{
    return {"answer a message box", [button, &seen] {
                const std::optional<SeenMessageBox> box = MessageBoxOnTop();
                if (!box || !Answer(*box, button)) {
                    return false;
                }
                seen = *box;
                return true;
            }};
}

} // namespace sitekeeper
