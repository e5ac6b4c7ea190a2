#include "platform/ui/Look.h"

#include "platform/ui/Colours.h"

#include <QApplication>
#include <QGroupBox>
#include <QPainter>
#include <QPixmapCache>
#include <QStyleFactory>
#include <QStyleOption>

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace ui {

namespace {

constexpr int belowTitle = 4;

// A title whose box can be switched off by a check mark is drawn as the style does it.
const QStyleOptionGroupBox *section(QStyle::ComplexControl control, const QStyleOptionComplex *option)
{
    if (control != QStyle::CC_GroupBox || option->subControls.testFlag(QStyle::SC_GroupBoxCheckBox))
        return nullptr;
    return qstyleoption_cast<const QStyleOptionGroupBox *>(option);
}

QFont titleFont(const QWidget *widget)
{
    QFont font = widget ? widget->font() : QApplication::font();
    font.setBold(true);
    return font;
}

// Titles are written with blanks around them, for the gap that boxes leave in their frame.
QRect titleRect(const QStyleOptionGroupBox &box, const QWidget *widget)
{
    const QFontMetrics metrics(titleFont(widget));
    return {box.rect.left(), box.rect.top(), metrics.horizontalAdvance(box.text.trimmed()), metrics.height()};
}

void drawSection(const QStyleOptionGroupBox &box, QPainter &painter, const QWidget *widget)
{
    if (box.text.isEmpty())
        return;
    const QRect title = titleRect(box, widget);
    const bool isEnabled = box.state.testFlag(QStyle::State_Enabled);
    painter.save();
    painter.setFont(titleFont(widget));
    painter.setPen(box.palette.color(isEnabled ? QPalette::Active : QPalette::Disabled, QPalette::WindowText));
    painter.drawText(title, static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter), box.text.trimmed());
    painter.setPen(hairline(box.palette));
    painter.drawLine(title.right() + Look::between, title.center().y(), box.rect.right(), title.center().y());
    painter.restore();
}

bool desktopColours = false;
std::optional<QPalette> ownColours;

// What Qt gives where it knows of none are the style's, which are rather grey.
bool tellsColours()
{
    const QPalette given = QApplication::palette();
    const QPalette plain = QApplication::style()->standardPalette();
    const QList<QPalette::ColorRole> roles = {QPalette::Window, QPalette::Base, QPalette::Text, QPalette::Highlight};
    return std::any_of(roles.begin(), roles.end(),
                       [&](QPalette::ColorRole role) { return given.color(role) != plain.color(role); });
}

using Colours = QList<std::pair<QPalette::ColorRole, QColor>>;

const Colours &lightColours()
{
    static const Colours colours = {{QPalette::Window, QColor(245, 246, 247)},
                                    {QPalette::WindowText, QColor(32, 36, 41)},
                                    {QPalette::Base, Qt::white},
                                    {QPalette::AlternateBase, QColor(247, 248, 250)},
                                    {QPalette::Text, QColor(32, 36, 41)},
                                    {QPalette::Button, QColor(244, 245, 246)},
                                    {QPalette::ButtonText, QColor(32, 36, 41)},
                                    {QPalette::Highlight, QColor(38, 104, 166)},
                                    {QPalette::HighlightedText, Qt::white},
                                    {QPalette::Link, QColor(29, 95, 168)},
                                    {QPalette::PlaceholderText, QColor(104, 112, 121)}};
    return colours;
}

const Colours &darkColours()
{
    static const Colours colours = {
        {QPalette::WindowText, QColor(230, 232, 235)},     {QPalette::Base, QColor(28, 30, 33)},
        {QPalette::AlternateBase, QColor(34, 37, 41)},     {QPalette::Text, QColor(230, 232, 235)},
        {QPalette::ButtonText, QColor(230, 232, 235)},     {QPalette::BrightText, Qt::white},
        {QPalette::Highlight, QColor(43, 105, 168)},       {QPalette::HighlightedText, Qt::white},
        {QPalette::Link, QColor(122, 178, 240)},           {QPalette::LinkVisited, QColor(190, 160, 235)},
        {QPalette::ToolTipBase, QColor(70, 75, 81)},       {QPalette::ToolTipText, QColor(230, 232, 235)},
        {QPalette::PlaceholderText, QColor(148, 155, 163)}};
    return colours;
}

} // namespace

Look::Look()
    : QProxyStyle(QStyleFactory::create(u"Fusion"_s))
{
}

void Look::use()
{
    ownColours.reset();
    QApplication::setStyle(new Look);
    desktopColours = tellsColours();
    if (!desktopColours)
        useOwnColours(Scheme::Light);
}

bool Look::hasDesktopColours()
{
    return desktopColours;
}

void Look::useOwnColours(Scheme scheme)
{
    const bool dark = scheme == Scheme::Dark;
    QPalette colours =
        dark ? QPalette(QColor(66, 71, 77), QColor(50, 54, 59)) : QApplication::style()->standardPalette();
    for (const auto &[role, colour] : dark ? darkColours() : lightColours())
        colours.setColor(role, colour);
    const QColor disabled = dark ? QColor(118, 124, 131) : QColor(150, 155, 161);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        colours.setColor(QPalette::Disabled, role, disabled);
    ownColours = colours;
    QApplication::setPalette({});
}

// The program's own colours are those that the style has. Given to the program as a palette, each control would have a
// copy of it; the style keeps the pictures of buttons, arrows and headers by the palette they were drawn with, and
// every window that opens would draw and keep all of them anew.
void Look::polish(QPalette &palette)
{
    if (ownColours)
        palette = *ownColours;
    else
        QProxyStyle::polish(palette);
}

// Drawing its round corners is most of what painting a form takes, and most fields are as large as another one.
QPixmap Look::inputFrame(const QStyleOption &option, double ratio) const
{
    const QString key = u"inputFrame-%1-%2-%3-%4-%5-%6"_s.arg(option.rect.width())
                            .arg(option.rect.height())
                            .arg(ratio)
                            .arg(option.state.testFlag(State_HasFocus))
                            .arg(option.palette.color(QPalette::Window).rgba())
                            .arg(option.palette.color(QPalette::Highlight).rgba());
    QPixmap frame;
    if (QPixmapCache::find(key, &frame))
        return frame;
    frame = QPixmap(option.rect.size() * ratio);
    frame.setDevicePixelRatio(ratio);
    frame.fill(Qt::transparent);
    QStyleOption atOrigin = option;
    atOrigin.rect.moveTopLeft({});
    QPainter painter(&frame);
    QProxyStyle::drawPrimitive(PE_FrameLineEdit, &atOrigin, &painter);
    QPixmapCache::insert(key, frame);
    return frame;
}

void Look::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                         const QWidget *widget) const
{
    const auto *row = qstyleoption_cast<const QStyleOptionViewItem *>(option);
    // Behind each cell of a list: Fusion mixes the colours of its frames before it sees that nothing is to be drawn.
    if (element == PE_PanelItemViewRow && row && !row->features.testFlag(QStyleOptionViewItem::Alternate) &&
        !row->state.testFlag(State_Selected))
        return;
    if (element == PE_FrameLineEdit && !option->rect.isEmpty()) {
        painter->drawPixmap(option->rect.topLeft(), inputFrame(*option, painter->device()->devicePixelRatioF()));
    } else {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void Look::drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
                              const QWidget *widget) const
{
    if (const QStyleOptionGroupBox *box = section(control, option))
        drawSection(*box, *painter, widget);
    else
        QProxyStyle::drawComplexControl(control, option, painter, widget);
}

QRect Look::subControlRect(ComplexControl control, const QStyleOptionComplex *option, SubControl part,
                           const QWidget *widget) const
{
    const QStyleOptionGroupBox *box = section(control, option);
    if (!box)
        return QProxyStyle::subControlRect(control, option, part, widget);
    const QRect title = box->text.isEmpty() ? QRect() : titleRect(*box, widget);
    if (part == SC_GroupBoxLabel)
        return title;
    return box->rect.adjusted(0, title.isEmpty() ? 0 : title.height() + belowTitle, 0, 0);
}

int Look::pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const
{
    const bool isSection = qobject_cast<const QGroupBox *>(widget) != nullptr;
    switch (metric) {
    case PM_LayoutLeftMargin:
    case PM_LayoutRightMargin:
        return isSection ? 0 : margin;
    case PM_LayoutTopMargin:
        return isSection ? belowTitle : margin;
    case PM_LayoutBottomMargin:
        return isSection ? lines : margin;
    case PM_LayoutHorizontalSpacing:
        return between;
    case PM_LayoutVerticalSpacing:
        return lines;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

QIcon Look::standardIcon(StandardPixmap icon, const QStyleOption *option, const QWidget *widget) const
{
    static const QHash<StandardPixmap, QString> drawings = {{SP_MessageBoxInformation, u"dialog-information"_s},
                                                            {SP_MessageBoxQuestion, u"dialog-question"_s},
                                                            {SP_MessageBoxWarning, u"dialog-warning"_s},
                                                            {SP_MessageBoxCritical, u"dialog-error"_s},
                                                            {SP_DirOpenIcon, u"folder-open"_s},
                                                            {SP_DirClosedIcon, u"folder"_s}};
    const QString drawing = drawings.value(icon);
    if (!drawing.isEmpty() && QIcon::hasThemeIcon(drawing))
        return QIcon::fromTheme(drawing);
    return QProxyStyle::standardIcon(icon, option, widget);
}

} // namespace ui
