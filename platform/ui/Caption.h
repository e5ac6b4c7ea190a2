#pragma once
#include <QGridLayout>
#include <QLabel>

namespace ui {

class Field;

/// The text before an input. Those that lead their lines get one width, so that the inputs of a form begin at the same
/// place.
class Caption : public QLabel
{
    Q_OBJECT

public:
    enum class Place
    {
        Leading,  ///< the first of its line
        Following ///< behind another input
    };

    Caption(const QString &text, Place place, QWidget *parent);
    /// Shows the mark of what a save requires.
    void markRequired();
    /// Makes it stand back behind the text it names.
    void setQuiet() { quiet_ = true; }
    Place place() const { return place_; }

protected:
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    Place place_;
    QLabel *mark_ = nullptr; // of what a save requires
    bool quiet_ = false;
};

/// Puts caption and control of `field` into `grid`; `position` and `span` count caption-and-control pairs.
void placeField(QGridLayout *grid, Field *field, int row, int position, int span);
/// Gives the leading captions in `boxes` the width of the widest.
void alignCaptions(const QList<QWidget *> &boxes);
/// The same for all sections of `page` that stand below each other.
void alignCaptionsOf(QWidget *page);

} // namespace ui
