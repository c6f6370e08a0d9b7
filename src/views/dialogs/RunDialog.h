#pragma once

#include <QDialog>
#include <optional>

namespace velmor {

/// Runs a dialog over `parent`, if there is one: what it holds at OK, nothing after Cancel.
template<class Dialog, class... Request>
auto RunDialog(QWidget* parent, const Request&... request) {
    Dialog dialog(parent, request...);
    return dialog.exec() == QDialog::Accepted ? std::optional(dialog.Values()) : std::nullopt;
}

/// What a request's rule says of the values; without a rule all are taken.
template<class Rule, class Values>
bool IsAccepted(const Rule& rule, const Values& values) {
    return !rule || rule(values);
}

} // namespace velmor
