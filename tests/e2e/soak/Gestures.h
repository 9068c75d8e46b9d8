// What an administrator may do, and what it means.
#pragma once

#include "e2e/soak/Scene.h"

#include <span>

namespace sitekeeper::e2e {

/// One thing that can be done in one place. It works the program and tells the model; what it waits for and does not
/// get, it throws.
struct Gesture
{
    const char* name;
    Place where;
    unsigned weight; // how often beside the others of that place
    void (*perform)(Scene& scene);
};

[[nodiscard]] std::span<const Gesture> MainGestures();
[[nodiscard]] std::span<const Gesture> DialogGestures();

/// Chooses one that can be done now.
[[nodiscard]] const Gesture& ChooseGesture(Scene& scene);

/// Waits for a message box that says this, and confirms it.
void ConfirmBox(const Scene& scene, const std::wstring& start);

/// Two presses of the mouse at one place shall not become a double click.
void AvoidDoubleClick();

} // namespace sitekeeper::e2e
