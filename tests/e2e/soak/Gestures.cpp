#include "e2e/soak/Gestures.h"

#include "e2e/support/Wide.h"

#include <vector>

namespace sitekeeper::e2e {

const Gesture& ChooseGesture(Scene& scene)
{
    std::vector<const Gesture*> possible; // as often as they weigh
    for (const auto& table : {MainGestures(), DialogGestures()}) {
        for (const Gesture& gesture : table) {
            if (gesture.where == scene.model.Where()) {
                possible.insert(possible.end(), gesture.weight, &gesture);
            }
        }
    }
    return *scene.dice.Of(possible);
}

void ConfirmBox(const Scene& scene, const std::wstring& start)
{
    const MessageWindow box(*scene.run);
    if (const std::wstring text = box.Text(); !text.starts_with(start)) {
        throw JourneyError("another message: " + ToUtf8(text));
    }
    box.Confirm();
}

void AvoidDoubleClick()
{
    static ULONGLONG last = 0;
    const ULONGLONG next = last + ::GetDoubleClickTime() + 50;
    if (const ULONGLONG now = ::GetTickCount64(); now < next) {
        WaitAnswering(nullptr, static_cast<DWORD>(next - now));
    }
    last = ::GetTickCount64();
}

} // namespace sitekeeper::e2e
