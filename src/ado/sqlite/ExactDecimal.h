// Decimal numbers kept as SQL Server's numeric type keeps them: exact digits and a scale.
#pragma once

#include <cstdint>

namespace ado::sqlite {

/// A decimal number: units / 10^scale.
struct Decimal {
    __int128 units = 0;
    int scale = 0;
};

/// The decimal a double stands for: its first 15 significant digits, all
/// that a double holds for sure, trailing zeros dropped. So 0.1 is one tenth
/// and not the binary fraction next to it, and the noise of binary
/// arithmetic (0.30000000000000004) is gone.
Decimal decimalOf(double value);

/// Rounded half away from zero to `scale` places, as SQL Server rounds
/// (a decimal with fewer places is left as it is).
Decimal rounded(Decimal value, int scale);

/// The double nearest to the decimal.
double toDouble(const Decimal &value);

/// A number written into numeric(precision, scale): rounded to the scale;
/// a value with more than precision - scale digits before the point raises
/// -2147217913 "Arithmetic overflow error converting numeric to data type
/// numeric." (for money: "... converting expression to data type money.").
double toNumeric(double value, int precision, int scale, bool money = false);
/// The same for an integer, which needs no rounding.
std::int64_t toNumeric(std::int64_t value, int precision, int scale, bool money = false);

/// A sum of numbers kept exact, for SUM and AVG: 0.1 + 0.2 - 0.3 is 0.
/// A total too large for 38 digits raises SQL Server's arithmetic overflow.
/// Places beyond the 20th of a value are rounded away.
class DecimalSum {
public:
    void add(std::int64_t value);
    void add(double value);

    long count() const { return count_; }
    /// True while every value added was an integer (the sum is then one too).
    bool integers() const { return !fractions_; }
    const Decimal &total() const { return total_; }

private:
    void add(Decimal value);

    Decimal total_;
    long count_ = 0;
    bool fractions_ = false;
};

} // namespace ado::sqlite
