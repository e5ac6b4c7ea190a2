#include "platform/ui/NumberEdits.h"
#include "tests/support/Documents.h"
#include "tests/support/TestMain.h"

#include <QLineEdit>

using namespace Qt::StringLiterals;

class TestKeyboard : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { workplace_ = std::make_unique<test::Workplace>(); }
    void cleanup() { workplace_.reset(); }

    void keypadPointTypesAComma();

private:
    std::unique_ptr<test::Workplace> workplace_;
};

void TestKeyboard::keypadPointTypesAComma()
{
    const test::Document note(*workplace_, test::receipt());
    auto *weight = note.control<ui::DecimalEdit>(u"txtPeso"_s);
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
