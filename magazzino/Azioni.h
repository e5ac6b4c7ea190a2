#pragma once
#include <QList>
#include <QString>
#include <functional>

class QWidget;

enum class ActionKind
{
    Form,
    Selection,
    Report
};

/// One command of the module. Without a factory the form does not exist yet and the action is disabled.
struct ModuleAction
{
    QString name;
    QString category;
    QString caption;
    ActionKind kind = ActionKind::Form;
    std::function<QWidget *(QWidget *owner)> create;
    QString right; ///< named right that the user needs; empty for none
    /// For reports: runs the report once the modal dialog was accepted.
    std::function<void(QWidget *dialog)> report = {};
};

/// All actions of the module, in the order of its action list.
const QList<ModuleAction> &moduleActions();
