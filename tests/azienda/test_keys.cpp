#include "platform/core/Lists.h"
#include "platform/ui/KeyList.h"
#include "platform/ui/PlaceKeys.h"
#include "platform/ui/ResultGrid.h"
#include "tests/support/Fixtures.h"

/// A key for everything: commands, pages, fields, entries of menus.
class TestKeys : public test::AtShownWorkplace
{
    Q_OBJECT

private Q_SLOTS:
    // Of no window do two commands, pages or fields have the same key, nor one that works everywhere; pressed, the key
    // of each field in sight leads there.
    void eachKeyIsItsOwnAndLeadsThere()
    {
        const QSet<QString> everywhere = keyTexts(place().window());
        QVERIFY(everywhere.contains(u"Shift+F1"_s));
        QStringList wrong;
        int seenPages = 0;
        forEachPage([&](QWidget &form) {
            ++seenPages;
            QSet<QString> seen = everywhere;
            const QList<ui::KeyUse> uses = ui::keysOf(form);
            for (const ui::KeyUse &use : uses) {
                const QString key = use.key.toString();
                if (seen.contains(key))
                    wrong.append(u"%1: %2 (%3)"_s.arg(form.objectName(), key, use.caption));
                seen.insert(key);
            }
            const QList<ui::PlaceKey> places = ui::placeKeys(form);
            for (const ui::PlaceKey &place : places) {
                if (place.page >= 0 || !place.target->isEnabled())
                    continue;
                const QKeyCombination key = place.key[0];
                QTest::keyClick(QApplication::focusWidget(), key.key(), key.keyboardModifiers());
                if (QApplication::focusWidget() != place.target)
                    wrong.append(u"%1: %2 leads elsewhere than to %3"_s.arg(form.objectName(), place.key.toString(),
                                                                            place.caption));
            }
        });
        QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join(u'\n')));
        QVERIFY(seenPages > 40);
    }

    // Tab and Shift+Tab go round through all that takes a click, but for buttons of a command with a key of its own,
    // further buttons of a row that arrows go through, and parts of inputs.
    void everythingTakesTheFocusByKeys()
    {
        QStringList wrong;
        qsizetype seen = 0;
        const auto look = [&](QWidget &window) {
            const QSet<QWidget *> forward = tabStops(Qt::Key_Tab);
            const QSet<QWidget *> backward = tabStops(Qt::Key_Backtab);
            const QList<QWidget *> all = window.findChildren<QWidget *>();
            for (QWidget *control : all) {
                if (!control->isVisible() || !control->isEnabled() || !takesClicks(*control))
                    continue;
                ++seen;
                if (!forward.contains(control) || !backward.contains(control))
                    wrong.append(u"%1: %2 %3"_s.arg(
                        window.objectName(), QLatin1String(control->metaObject()->className()), control->objectName()));
            }
        };
        forEachPage(look);
        for (const QString &action :
             {u"actOpzioni"_s, u"actOpzioniDocumenti"_s, u"actImporta"_s, u"actCambiaPassword"_s}) {
            place().dialogs.expect([&look](QDialog &dialog) {
                look(dialog);
                dialog.reject();
            });
            test::trigger(&place().commands(), action);
        }
        static const QRegularExpression selections(u"^actModSeleziona"_s);
        const QList<QAction *> actions = place().module().findChildren<QAction *>(selections);
        for (const QAction *action : actions) {
            TMMGModSelezionaBase &dialog = place().module().selectionDialog(action->objectName());
            dialog.show();
            dialog.activateWindow();
            test::settle();
            look(dialog);
            dialog.hide();
        }
        wrong.removeDuplicates();
        QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join(u'\n')));
        QVERIFY(seen > 300 && actions.size() > 8);
    }

    void keysOfFieldsDoNotFollowWhatIsChosen()
    {
        const test::Document note(place(), test::deliveryNote());
        const auto keys = [&note] {
            return core::mapped(ui::placeKeys(note.form()), [](const ui::PlaceKey &place) {
                return QString(place.key.toString() + u' ' + place.caption);
            });
        };
        const QStringList before = keys();
        note.fillHeader();
        note.control<QTabWidget>(u"pages"_s)->setCurrentIndex(0);
        QCOMPARE(keys(), before);
    }

    void keysLeadThroughADocument()
    {
        for (const int number : {1, 2, 3})
            test::insertInto(database(), u"DDT_SCARICO"_s,
                             u"NUMERO=%1|ANNO=2026|CLI_RAGIONESOCIALE=Rossi"_s.arg(number));
        const test::Document note(place(), test::deliveryNote());
        const auto page = [&note] { return note.control<QTabWidget>(u"pages"_s)->currentIndex(); };
        for (const int wanted : {1, 2, 0, 1}) {
            test::pressKey(static_cast<Qt::Key>(Qt::Key_1 + wanted), Qt::AltModifier);
            QCOMPARE(page(), wanted);
            QVERIFY(note.control<QTabWidget>(u"pages"_s)->currentWidget()->isAncestorOf(QApplication::focusWidget()));
        }
        test::pressKey(Qt::Key_T, Qt::ControlModifier);
        QCOMPARE(note.grid()->model()->rowCount(), 1);
        test::pressKey(Qt::Key_Escape);
        place().messages.expectQuestion(test::saveFirst, core::Answer::Cancel);
        test::pressKey(Qt::Key_PageDown, Qt::ControlModifier);
        QCOMPARE(note.flags(), u"new modified"_s);
        // Down and up again, newest first, or as the list shows them.
        place().messages.expectQuestion(test::saveFirst, core::Answer::No);
        test::pressKey(Qt::Key_PageDown, Qt::ControlModifier);
        const QStringList keys = lines(u"SELECT IDDDT_SCARICO FROM DDT_SCARICO ORDER BY ANNO DESC, NUMERO DESC"_s);
        QCOMPARE(QString::number(note.form().IdRecord()), keys[0]);
        test::pressKey(Qt::Key_PageDown, Qt::ControlModifier);
        QCOMPARE(QString::number(note.form().IdRecord()), keys[1]);
        const ui::SearchForm *list = openList(u"actRicercaDdTScarico"_s);
        test::retype(list, u"txtAnno"_s, lines(u"SELECT ANNO FROM DDT_SCARICO ORDER BY ANNO DESC"_s)[0]);
        test::press(list, u"cmdCerca"_s);
        QTest::mouseClick(gridOf(*list)->horizontalHeader()->viewport(), Qt::LeftButton, {}, {10, 5});
        note.form().activateWindow();
        place().module().openForm(test::deliveryNote().action);
        test::pressKey(Qt::Key_PageDown, Qt::ControlModifier);
        QCOMPARE(QString::number(note.form().IdRecord()), keys[0]);
        QCOMPARE(QString::number(list->selectedKey()), keys[0]);
    }

    void letterChoosesInMenus()
    {
        const ui::SearchForm *list = openList(u"actRicercaDdTScarico"_s);
        QMenu *menu = list->formMenu();
        const auto typeLetter = [menu](char letter) {
            menu->popup({});
            QTest::keyClick(menu, letter);
            return menu->isVisible() && menu->activeAction() ? menu->activeAction()->text() : QString();
        };
        // Several begin with it: each press marks the next one.
        QCOMPARE(typeLetter('s'), u"Stampa"_s);
        QTest::keyClick(menu, 's');
        QCOMPARE(menu->activeAction()->text(), u"Salva in PDF"_s);
        menu->hide();
        QCOMPARE(typeLetter('v'), QString());
        QVERIFY(test::control<QWidget>(list, u"txtCodice"_s)->hasFocus());
    }

    void pageOfKeysTellsThoseThatWork()
    {
        openList(u"actRicercaDdTScarico"_s);
        QTest::keyClick(place().window().windowHandle(), Qt::Key_F1, Qt::ShiftModifier);
        test::settle();
        auto *page = test::control<QWidget>(&place().window(), u"frmTasti"_s);
        const auto *grid = test::control<QTableView>(page, u"GridTasti"_s);
        QVERIFY(test::columnTexts(grid, u"Dove"_s).contains(u"Ovunque"_s));
        test::type(test::control<QWidget>(page, u"txtCerca"_s), u"in pdf"_s);
        QCOMPARE(test::columnTexts(grid, u"Tasto"_s), QStringList(u"Ctrl+Shift+P"_s));
        QCOMPARE(test::columnTexts(grid, u"Dove"_s), QStringList(u"Gestione D.d.T. di scarico"_s));
        page->close();
    }

private:
    // All that has the focus until it comes back to where it began.
    static QSet<QWidget *> tabStops(Qt::Key key)
    {
        QSet<QWidget *> stops;
        while (QApplication::focusWidget() && !stops.contains(QApplication::focusWidget())) {
            stops.insert(QApplication::focusWidget());
            QTest::keyClick(QApplication::focusWidget(), key,
                            key == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier);
        }
        return stops;
    }

    static bool takesClicks(const QWidget &control)
    {
        const auto isIn = [&control](const char *kind) {
            for (const QWidget *around = control.parentWidget(); around; around = around->parentWidget()) {
                if (around->inherits(kind))
                    return true;
            }
            return false;
        };
        for (const char *kind : {"QLineEdit", "QComboBox", "QAbstractSpinBox", "QAbstractItemView", "QTabBar"}) {
            if (isIn(kind))
                return false;
        }
        const auto *command = control.window()->findChild<QAction *>(u"act"_s + control.objectName().mid(3));
        if (command && !command->shortcut().isEmpty())
            return false;
        const auto *button = qobject_cast<const QAbstractButton *>(&control);
        const auto *tool = qobject_cast<const QToolButton *>(&control);
        if (tool && (isIn("ui::LetterBar") || tool->objectName() == u"qt_toolbar_ext_button" ||
                     (tool->defaultAction() && !tool->defaultAction()->shortcut().isEmpty())))
            return false;
        if (const auto *radio = qobject_cast<const QRadioButton *>(&control))
            return radio->isChecked();
        return button || qobject_cast<const QAbstractItemView *>(&control) ||
               qobject_cast<const QComboBox *>(&control) || qobject_cast<const QPlainTextEdit *>(&control) ||
               (qobject_cast<const QLineEdit *>(&control) && control.focusPolicy() != Qt::ClickFocus);
    }

    static QSet<QString> keyTexts(const QWidget &window)
    {
        QSet<QString> texts;
        const QList<ui::KeyUse> uses = ui::keysOf(window);
        for (const ui::KeyUse &use : uses)
            texts.insert(use.key.toString());
        return texts;
    }

    // Every window that a command of host or module shows, on each of its pages.
    void forEachPage(const std::function<void(QWidget &)> &look) const
    {
        const auto show = [&](ui::CommandRegistry &commands, const QString &action) {
            QWidget *form = commands.openForm(action);
            if (!form || form->isWindow())
                return;
            test::settle();
            auto *pages = form->findChild<QTabWidget *>();
            for (int page = 0; page < (pages ? pages->count() : 1); ++page) {
                if (pages)
                    QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(Qt::Key_1 + page),
                                    Qt::AltModifier);
                test::settle();
                look(*form);
            }
            form->parentWidget()->close();
            test::settle();
        };
        for (ui::CommandRegistry *commands :
             {static_cast<ui::CommandRegistry *>(&place().commands()), &place().module().commands()}) {
            static const QRegularExpression shown(u"^act(Inserimento|Ricerca|Categorie|Azienda|Stampa|Fatture)"_s);
            const QList<QAction *> actions =
                commands == &place().commands()
                    ? commands->findChildren<QAction *>(shown)
                    : place().module().findChildren<QAction *>(shown, Qt::FindDirectChildrenOnly);
            for (const QAction *action : actions) {
                if (action->isEnabled() && action->objectName() != u"actStampaSottoscortaRiordino"_s)
                    show(*commands, action->objectName());
            }
        }
    }
};

static const test::Registered<TestKeys> registered;

#include "test_keys.moc"
