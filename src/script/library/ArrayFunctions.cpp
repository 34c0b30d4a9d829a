#include "script/library/Arguments.h"
#include "script/library/Tables.h"

namespace tessary::script {
namespace {

Value ArrayOf(std::vector<Value> elements) {
  if (elements.size() > kMaxElements) Raise(kOutOfMemory);
  return Value::Of(Make<script::Array>(std::move(elements)));
}

// The elements of an array of one dimension.
const std::vector<Value>& ListOf(const Value& value) {
  if (!value.Is(Type::Array)) Raise(kTypeMismatch);
  if (value.array().dimensions() != 1) Raise(value.array().dimensions() == 0 ? kSubscript : kTypeMismatch);
  return value.array().elements();
}

std::string ElementText(Context& context, const Value& element) {
  const Value plain = context.Plain(element);
  if (plain.Is(Type::Null)) Raise(kTypeMismatch);
  return ToText(plain);
}

Value NewArray(Context&, Arguments arguments) { return ArrayOf({arguments.begin(), arguments.end()}); }

// The dimension, counted from 0, that LBound or UBound asks for.
int DimensionOf(Arguments arguments) {
  if (!arguments[0].Is(Type::Array)) Raise(kTypeMismatch);
  const std::int32_t dimension = LongOr(arguments, 1, 1);
  if (dimension < 1 || dimension > arguments[0].array().dimensions()) Raise(kSubscript);
  return dimension - 1;
}

Value LBound(Context&, Arguments arguments) {
  DimensionOf(arguments);
  return Value::Long(0);
}

Value UBound(Context&, Arguments arguments) {
  const int dimension = DimensionOf(arguments);
  return Value::Long(arguments[0].array().UpperBound(dimension));
}

Value Join(Context& context, Arguments arguments) {
  const std::string delimiter = Given(arguments, 1) ? ToText(arguments[1]) : " ";
  std::string text;
  bool first = true;
  for (const Value& element : ListOf(arguments[0])) {
    if (!first) text += delimiter;
    first = false;
    text += ElementText(context, element);
    CheckTextSize(text.size());
  }
  return Value::String(std::move(text));
}

Value Split(Context&, Arguments arguments) {
  const Value whole = AsText(arguments[0]);
  const Value delimiter = Given(arguments, 1) ? AsText(arguments[1]) : Value::String(" ");
  const std::int32_t count = LongOr(arguments, 2, -1);
  const bool ignoreCase = IgnoresCase(arguments, 3);
  if (count < -1) Raise(kInvalidCall);
  std::vector<Value> parts;
  if (whole.string().empty() || count == 0) return ArrayOf({});
  if (delimiter.string().empty()) return ArrayOf({whole});
  WithUnits(whole, delimiter, [&](auto text, auto wanted) {
    const Searcher searcher(text, wanted, ignoreCase);
    std::size_t at = 0;
    for (std::int32_t left = count; left != 1; --left) {
      const std::size_t found = searcher.Find(at);
      if (found == text.npos) break;
      parts.push_back(Value::String(TextOf(text.substr(at, found - at))));
      if (parts.size() > kMaxElements) Raise(kOutOfMemory);
      at = found + wanted.size();
    }
    parts.push_back(Value::String(TextOf(text.substr(at))));
  });
  return ArrayOf(std::move(parts));
}

Value Filter(Context& context, Arguments arguments) {
  const Value wanted = AsText(arguments[1]);
  const bool include = BooleanOr(arguments, 2, true);
  const bool ignoreCase = IgnoresCase(arguments, 3);
  std::vector<Value> chosen;
  for (const Value& element : ListOf(arguments[0])) {
    const Value candidate = Value::String(ElementText(context, element));
    const bool found = WithUnits(candidate, wanted, [&](auto text, auto part) {
      return Searcher(text, part, ignoreCase).Find(0) != text.npos;
    });
    if (found == include) chosen.push_back(candidate);
  }
  return ArrayOf(std::move(chosen));
}

constexpr NativeFunction kFunctions[] = {
    {"Array", 0, -1, NewArray, true}, {"Filter", 2, 4, Filter}, {"Join", 1, 2, Join},
    {"LBound", 1, 2, LBound},         {"Split", 1, 4, Split},   {"UBound", 1, 2, UBound},
};

}  // namespace

FunctionTable ArrayFunctions() { return kFunctions; }

}  // namespace tessary::script
