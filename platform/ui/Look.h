#pragma once
#include <QProxyStyle>

class QStyleOptionGroupBox;

namespace ui {

/// Which of the program's own colours.
enum class Scheme
{
    Light,
    Dark
};

/// How the program looks, in one place: the desktop's colours, one rule of distances for every form, sections parted
/// by a line instead of boxes, pictures of the icon theme in message boxes.
class Look : public QProxyStyle
{
    Q_OBJECT

public:
    /// Distances in pixels, for layouts that set their own.
    ///@{
    static constexpr int margin = 10;   ///< of a form from its window
    static constexpr int between = 8;   ///< two things side by side
    static constexpr int lines = 6;     ///< two lines of a form
    static constexpr int sections = 24; ///< two sections side by side
    ///@}

    Look();
    /// Gives the program its look, and its own calm colours where the desktop has none. Once, before the first window.
    static void use();
    /// Did Qt know the desktop's colours at use()?
    static bool hasDesktopColours();
    /// Shows the program's own colours, also in windows that are open.
    static void useOwnColours(Scheme scheme);

    using QProxyStyle::polish;
    void polish(QPalette &palette) override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
                            const QWidget *widget) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex *option, SubControl part,
                         const QWidget *widget) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const override;
    QIcon standardIcon(StandardPixmap icon, const QStyleOption *option, const QWidget *widget) const override;

private:
    QPixmap inputFrame(const QStyleOption &option, double ratio) const;
};

} // namespace ui
