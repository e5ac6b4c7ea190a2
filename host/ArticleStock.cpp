#include "host/ArticleStock.h"

namespace host {

ui::FigureSource &articleStock()
{
    static ui::FigureSource source;
    return source;
}

} // namespace host
