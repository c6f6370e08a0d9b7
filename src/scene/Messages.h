#pragma once

#include "platform/Progress.h"

#include <memory>
#include <string>

namespace velmor {

/// Whether the user can take back what a question asks for.
enum class Consequence { Undoable, Final };

/// What the program says to the user, and asks with yes or no.
class IMessages {
public:
    virtual ~IMessages() = default;

    /// The system's message box.
    virtual void ShowMessage(const std::string& text) = 0;
    /// The application's own dialog, titled "Velmor Message!", with an OK button only.
    virtual void ShowVelmorMessage(const std::string& text) = 0;
    /// The same dialog with OK and Cancel; true for OK. What is final does not happen by a press of Return alone.
    [[nodiscard]] virtual bool Confirm(const std::string& text, Consequence consequence = Consequence::Final) = 0;
    /// Yes and No; true for Yes. Asked before something is overwritten, stopped or left, so Return means No.
    [[nodiscard]] virtual bool AskYesNo(const std::string& text) = 0;
    /// A text for the status bar.
    virtual void ShowStatus(const std::string& text) = 0;
    /// Long work begins; it ends when the object dies. `title` is the progress dialog's.
    virtual std::unique_ptr<IProgress> BeginProgress(const std::string& title) = 0;
    /// A moment of work without progress: a wait cursor until the handle dies.
    virtual std::shared_ptr<void> BeginWait() = 0;
};

} // namespace velmor
