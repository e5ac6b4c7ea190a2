#include "platform/ui/Bell.h"

#include <QApplication>

#include <utility>

namespace ui {

namespace {

Bell current;

} // namespace

void ringBell()
{
    current ? current() : QApplication::beep();
}

Bell setBell(Bell bell)
{
    return std::exchange(current, std::move(bell));
}

} // namespace ui
