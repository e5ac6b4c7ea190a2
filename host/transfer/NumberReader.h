#pragma once
#include <QStringList>

#include <optional>

namespace host {

/// Reads the numbers of one column of a file, which all are written the same way: with a decimal comma, as Italians
/// write them ("1.234,50", "1234,5", "€ 3,00"), or with a decimal point, as programs do ("1234.50", "1,234.50").
///
/// Which of the two it is shows in the numbers that can only be read one way. "1.234" can be read both ways: it counts
/// as Italian (1234) unless other numbers of the column have a decimal point (1,234), and as no number at all where the
/// column has both.
class NumberReader
{
public:
    explicit NumberReader(const QStringList &column);

    /// Nothing for a text that is no number or that cannot be told.
    std::optional<double> read(const QString &text) const;

private:
    bool commas_ = false;
    bool points_ = false;
};

} // namespace host
