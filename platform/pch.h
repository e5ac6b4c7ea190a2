// Precompiled header of every target: the Qt headers that nearly every unit reads.
#pragma once
#include <QtCore>
#include <QtWidgets>
#include <functional>
#include <memory>
#include <optional>
#include <vector>
