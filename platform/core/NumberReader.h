#pragma once
#include <QStringList>

#include <optional>

/// The one rule by which a text is read as a number, in fields, grid cells and imported files.
namespace core {

/// A number as somebody wrote it.
struct WrittenNumber
{
    double value = 0;
    int places = 0; ///< digits written behind the decimal mark
};

/// Reads one number on its own.
///
/// | text                       | read as                                                       |
/// |----------------------------|---------------------------------------------------------------|
/// | 1234,5  1.234,50  € 3,00   | Italian: decimal comma, points between thousands              |
/// | 12.5  1234.50  .5  0.125   | one point that cannot separate thousands is the decimal mark  |
/// | 1,234.50                   | both, the point last: as other programs write it              |
/// | 1.234  1.234.567  12 500   | thousands                                                     |
/// | 1,2,3  12.34,5  1.2.3  -   | nothing                                                       |
///
/// A sign may stand before or behind the currency sign. Returns nothing for a text that is no number.
std::optional<WrittenNumber> readNumber(const QString &text);

/// Reads the numbers of one column of a file, which all are written the same way: with a decimal comma, as Italians
/// write them ("1.234,50", "1234,5", "€ 3,00"), or with a decimal point, as programs do ("1234.50", "1,234.50").
///
/// Which of the two it is shows in the numbers that can only be read one way. "1.234" can be read both ways: it counts
/// as Italian (1234) unless other numbers of the column have a decimal point (1,234), and as no number at all where the
/// column has both.
class NumberReader
{
public:
    NumberReader() = default;
    /// Looks through all texts of the column, so that each of them can be read.
    explicit NumberReader(const QStringList &column);

    /// One more number of the column, before the first one is read.
    void learn(const QString &cell);

    /// Nothing for a text that is no number or that cannot be told.
    std::optional<double> read(const QString &text) const;

private:
    bool commas_ = false;
    bool points_ = false;
};

} // namespace core
