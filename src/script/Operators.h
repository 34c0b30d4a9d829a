// The operators of the language on plain values (no objects, no references).
//
// Null on either side gives Null unless said otherwise. A whole result that its subtype cannot hold goes to the
// next wider one (Byte, Integer, Long, Double); a Double that overflows raises 6. A string counts as the number
// in it and raises 13 if it holds none.
#pragma once

#include "script/Value.h"

namespace tessary::script {

Value Add(const Value& left, const Value& right);  ///< two strings are joined
Value Subtract(const Value& left, const Value& right);
Value Multiply(const Value& left, const Value& right);
Value Divide(const Value& left, const Value& right);         ///< 11 for a zero divisor, 6 for 0 / 0
Value IntegerDivide(const Value& left, const Value& right);  ///< operands rounded to Long first
Value Modulo(const Value& left, const Value& right);         ///< operands rounded to Long first
Value Power(const Value& left, const Value& right);          ///< always Double
Value Concatenate(const Value& left, const Value& right);    ///< Null counts as "" beside anything else
Value Negate(const Value& operand);

// Logic, bit by bit. Null is "unknown": False And Null is False, True Or Null is True.
Value Not(const Value& operand);
Value And(const Value& left, const Value& right);
Value Or(const Value& left, const Value& right);
Value Xor(const Value& left, const Value& right);
Value Eqv(const Value& left, const Value& right);
Value Imp(const Value& left, const Value& right);

enum class Comparison : std::uint8_t { Equal, NotEqual, Less, LessOrEqual, Greater, GreaterOrEqual };

/// Which side of a comparison is a literal. A number and a string in variables never compare equal, the number
/// being less; but beside a literal number a string counts as its number, and beside a literal string a number
/// as its text.
enum class Literal : std::uint8_t { None, Left, Right, Both };

Value Compare(Comparison comparison, Literal literal, const Value& left, const Value& right);

}  // namespace tessary::script
