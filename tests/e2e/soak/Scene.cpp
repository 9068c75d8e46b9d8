#include "e2e/soak/Scene.h"

#include "e2e/support/Wide.h"

namespace sitekeeper::e2e {

void Scene::Tell(const std::wstring& detail)
{
    history.back() += " " + ToUtf8(detail);
}

void Scene::ExpectEnd(const RECT& place)
{
    const DWORD code = run->WaitForEnd();
    if (code != 0) {
        throw JourneyError("the program ended with code " + std::to_string(code));
    }
    model.End(place);
    shortcuts.reset();
    access.reset();
    main.reset();
    run.reset();
}

} // namespace sitekeeper::e2e
