#pragma once
#include "platform/ui/FigureSource.h"

/// What a module knows of the stock of articles. The host keeps the articles and no stock; without such a module its
/// forms and lists show none.
namespace host {

/// Pieces on hand, by the code of the article.
ui::FigureSource &articleStock();

} // namespace host
