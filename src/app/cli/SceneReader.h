#pragma once

#include "platform/Status.h"
#include "platform/files/Profile.h"
#include "scene/SceneContext.h"

#include <memory>
#include <string>

namespace velmor {

/// A scene read from a database without changing anything there.
struct CReadScene {
    explicit CReadScene(IPrompter& prompter) : context{model, prompter, views, profile} {}
    CReadScene(const CReadScene&) = delete;
    CReadScene& operator=(const CReadScene&) = delete;

    CSceneModel model;
    CViewList views;
    CProfile profile;
    CSceneContext context;
};

/// Null, after the message, when the database or the scene does not exist or its xsheet cannot be read. The sound
/// track is not prepared.
std::unique_ptr<CReadScene> ReadScene(const std::string& database, const std::string& scene, IPrompter& prompter);

/// The same for a scene that will be changed: what programs that are gone left unfinished in its folders, and in
/// the database's own, is cleared away.
std::unique_ptr<CReadScene> ReadSceneToChange(const std::string& database, const std::string& scene,
                                              IPrompter& prompter);

/// False, after the message, when there is no such database folder.
[[nodiscard]] bool RequireDatabase(const std::string& database, IPrompter& prompter);

} // namespace velmor
