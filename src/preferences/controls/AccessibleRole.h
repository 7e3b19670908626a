#pragma once

#include <QAccessible>
#include <QWidget>

namespace orvantile {

/// Tells assistive technology what a widget is that the toolkit takes for a mere container. To be called
/// before the widget is named, since the toolkit remembers what it has answered once.
void setAccessibleRole(QWidget& widget, QAccessible::Role role);

} // namespace orvantile
