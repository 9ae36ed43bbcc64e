#pragma once
// Controls made under the names by which the windows' operations and the tests know them.

#include <QPushButton>
#include <QString>
#include <utility>

namespace zarvion::gui {

//! A new control of type Control, made with args and named name.
template <class Control, class... Args>
Control* NamedControl(const char* name, Args&&... args)
{
    auto* control = new Control(std::forward<Args>(args)...);
    control->setObjectName(QString::fromLatin1(name));
    return control;
}

//! A command button that Return in a dialog presses only when it is made the default.
inline QPushButton* CommandButton(const char* name, const QString& caption, QWidget* parent)
{
    auto* button = NamedControl<QPushButton>(name, caption, parent);
    button->setAutoDefault(false);
    return button;
}

} // namespace zarvion::gui
