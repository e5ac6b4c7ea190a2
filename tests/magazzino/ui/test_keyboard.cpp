#include "host/ui/MainWindow.h"
#include "tests/support/Documents.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QDoubleSpinBox>
#include <QGroupBox>
#include <QLineEdit>

using namespace Qt::StringLiterals;

class TestKeyboard : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { workplace_ = std::make_unique<test::Workplace>(); }
    void cleanup() { workplace_.reset(); }

    void tabFollowsTheScreen_data();
    void tabFollowsTheScreen();
    void keypadPointTypesAComma();

private:
    static const test::DocumentNames &names();

    std::unique_ptr<test::Workplace> workplace_;
};

namespace {

// `second` stands to the right of `first` on its line, or below it.
bool follows(const QRect &first, const QRect &second)
{
    const bool sameLine = std::min(first.bottom(), second.bottom()) > std::max(first.top(), second.top());
    return sameLine ? second.left() >= first.left() : second.top() > first.top();
}

QRect placeIn(const QWidget *form, const QWidget *widget)
{
    return {widget->mapTo(form, QPoint(0, 0)), widget->size()};
}

const QWidget *boxOf(const QWidget *widget)
{
    while (widget && !qobject_cast<const QGroupBox *>(widget))
        widget = widget->parentWidget();
    return widget;
}

// Groups are walked one after the other, so what stands in different groups is compared by its group.
bool followsOnScreen(const QWidget *form, const QWidget *first, const QWidget *second)
{
    const QWidget *firstBox = boxOf(first);
    const QWidget *secondBox = boxOf(second);
    if (firstBox == secondBox || !firstBox || !secondBox)
        return follows(placeIn(form, first), placeIn(form, second));
    return follows(placeIn(form, firstBox), placeIn(form, secondBox));
}

QString nameOf(const QWidget *widget)
{
    return widget->objectName().isEmpty() ? QString::fromLatin1(widget->metaObject()->className())
                                          : widget->objectName();
}

} // namespace

const test::DocumentNames &TestKeyboard::names()
{
    return QString::fromLatin1(QTest::currentDataTag()).startsWith(u"receipt") ? test::receipt() : test::deliveryNote();
}

void TestKeyboard::tabFollowsTheScreen_data()
{
    QTest::addColumn<int>("page");
    for (int page = 0; page < 3; ++page) {
        QTest::addRow("receipt, page %d", page) << page;
        QTest::addRow("delivery note, page %d", page) << page;
    }
}

void TestKeyboard::tabFollowsTheScreen()
{
    QFETCH(int, page);
    const test::Document note(*workplace_, names());
    QCOMPARE(QApplication::focusWidget(), note.control<QWidget>(u"txtNumero"_s));
    note.showPage(page);
    test::settle();
    QWidget *start = note.control<QWidget>(u"txtNumero"_s);
    start->setFocus();
    QList<QWidget *> walked;
    QStringList wrong;
    do {
        QWidget *focused = QApplication::focusWidget();
        if (!walked.isEmpty() && !followsOnScreen(&note.form(), walked.last(), focused))
            wrong.append(u"%1 before %2"_s.arg(nameOf(walked.last()), nameOf(focused)));
        walked.append(focused);
        QTest::keyClick(focused, Qt::Key_Tab);
    } while (QApplication::focusWidget() != start && walked.size() < 60);
    QCOMPARE(wrong.join(u"; "_s), QString());
    QStringList left;
    const QList<QWidget *> all = note.form().findChildren<QWidget *>();
    for (QWidget *widget : all) {
        const bool stop = widget->isVisible() && widget->isEnabled() && !widget->focusProxy() &&
                          (widget->focusPolicy() & Qt::TabFocus);
        if (stop && !walked.contains(widget))
            left.append(nameOf(widget));
    }
    QCOMPARE(left.join(u"; "_s), QString());
}

void TestKeyboard::keypadPointTypesAComma()
{
    const test::Document note(*workplace_, test::receipt());
    auto *weight = note.control<QDoubleSpinBox>(u"txtPeso"_s);
    weight->selectAll();
    test::type(weight, u"7"_s);
    QTest::keyClick(weight, Qt::Key_Period, Qt::KeypadModifier);
    test::type(weight, u"5"_s);
    QCOMPARE(weight->value(), 7.5);

    note.addArticle(u"TRA-0018"_s, u"2"_s, u"1"_s);
    note.grid()->select(0, RowColumn::Quantita);
    QTest::keyClick(note.grid(), Qt::Key_3); // the first key opens the editor
    auto *editor = test::control<QLineEdit>(note.grid(), u"editorRiga"_s);
    QTest::keyClick(editor, Qt::Key_Period, Qt::KeypadModifier);
    QTest::keyClick(editor, Qt::Key_5);
    QTest::keyClick(editor, Qt::Key_Enter, Qt::KeypadModifier);
    test::settle();
    QCOMPARE(test::cellText(note.grid(), 0, u"Q.tà"_s), u"3,50"_s);
}

static const test::Registered<TestKeyboard> registered;

#include "test_keyboard.moc"
