#pragma once
#include <QHash>
#include <QObject>

#include <functional>

namespace ui {

/// Figures of records that somebody else knows than who keeps the records, by a text of theirs. Nobody does at first.
class FigureSource : public QObject
{
    Q_OBJECT

public:
    using Reader = std::function<QHash<QString, double>(const QStringList &texts)>;

    /// From now on `reader` gives the figures of many texts in one turn; a text that it leaves out has 0. It may throw.
    /// An empty one: nobody does any more.
    void setReader(Reader reader) { reader_ = std::move(reader); }
    /// Does anybody know them?
    bool isKnown() const { return static_cast<bool>(reader_); }
    /// Those of `texts`; empty while nobody knows them. Throws what the reader throws.
    QHash<QString, double> of(const QStringList &texts) const
    {
        return reader_ ? reader_(texts) : QHash<QString, double>();
    }

Q_SIGNALS:
    /// Figures may have changed since they were asked for.
    void changed();

private:
    Reader reader_;
};

} // namespace ui
