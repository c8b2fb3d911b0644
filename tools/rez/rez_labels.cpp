// Label and count bookkeeping, and the evaluation scope of template
// expressions.
#include "rez/rez_labels.h"

namespace rez {

LabelBook::LabelBook(const TypeDecl& decl) { Collect(decl.fields); }

void LabelBook::Collect(const std::vector<Field>& fields) {
  for (const Field& f : fields) {
    if (f.kind == FieldKind::Label) labels_[f.label] = f.depth;
    if (f.kind == FieldKind::Array) {
      if (!f.label.empty()) arrays_[f.label] = f.depth;
      Collect(f.fields);
    }
    for (const Case& c : f.cases) Collect(c.fields);
  }
}

std::vector<int> LabelBook::Path(int depth) const {
  std::vector<int> path;
  for (int i = 0; i < depth && i < static_cast<int>(open_.size()); ++i)
    path.push_back(open_[static_cast<std::size_t>(i)].index);
  return path;
}

void LabelBook::Place(const std::string& label, int depth, std::int64_t bit) {
  positions_[label][Path(depth)] = bit;
}

void LabelBook::Count(const std::string& array, int depth, std::int64_t count) {
  if (!array.empty()) counts_[array][Path(depth)] = count;
}

bool LabelBook::FindCount(const std::string& array, std::int64_t& count) const {
  auto depth = arrays_.find(array);
  auto counts = counts_.find(array);
  if (depth == arrays_.end() || counts == counts_.end()) return false;
  auto found = counts->second.find(Path(depth->second));
  if (found == counts->second.end()) return false;
  count = found->second;
  return true;
}

bool ReadBits(const std::string& bytes, std::uint64_t bit, int width, std::uint64_t& value) {
  if (width < 0 || width > 64 || bit + static_cast<std::uint64_t>(width) > bytes.size() * 8u)
    return false;
  value = 0;
  for (int i = 0; i < width; ++i, ++bit) {
    unsigned byte = static_cast<unsigned char>(bytes[static_cast<std::size_t>(bit / 8)]);
    value = value << 1 | ((byte >> (7 - bit % 8)) & 1u);
  }
  return true;
}

bool LabelBook::Lookup::Unknown(const Expr& at, const std::string& what, std::int64_t& value) {
  if (missing_ == Missing::Zero) {
    value = 0;
    return true;
  }
  if (missing_ == Missing::Throw) throw Unresolved{};
  sources_.Fail(at.where, what);
}

std::vector<int> LabelBook::Lookup::PathFor(int depth, const std::vector<Expr>& subscripts) {
  int given = static_cast<int>(subscripts.size());
  if (given > depth)
    sources_.Fail(subscripts[0].where, "the label has " + std::to_string(depth) +
                                           " array subscripts, not " + std::to_string(given));
  std::vector<int> path = book_.Path(depth - given);
  for (const Expr& s : subscripts) path.push_back(static_cast<int>(Evaluate(s, *this, sources_)));
  return path;
}

bool LabelBook::Lookup::Name(const Expr& name, std::int64_t& value) {
  auto depth = book_.labels_.find(name.text);
  if (depth == book_.labels_.end()) return false;
  std::vector<int> path = PathFor(depth->second, name.subscripts);
  auto placed = book_.positions_.find(name.text);
  if (placed != book_.positions_.end()) {
    auto found = placed->second.find(path);
    if (found != placed->second.end()) {
      value = found->second;
      return true;
    }
  }
  return Unknown(name, "label " + name.text + " has no place for these array indices", value);
}

bool LabelBook::Lookup::Function(const Expr& call, std::int64_t& value) {
  const std::string& f = call.text;
  const std::vector<Expr>& args = call.operands;
  if (f == "$$id" || f == "$$type" || f == "$$attributes") {
    value = f == "$$id" ? context_.id : f == "$$type" ? context_.type : context_.attributes;
    return args.empty();
  }
  if ((f == "$$countof" || f == "$$arrayindex") && args.size() == 1 &&
      args[0].op == Expr::Op::Name && book_.IsArray(args[0].text)) {
    if (f == "$$countof")
      return book_.FindCount(args[0].text, value) ||
             Unknown(call, "the count of array " + args[0].text + " is not known here", value);
    for (auto open = book_.open_.rbegin(); open != book_.open_.rend(); ++open)
      if (*open->array == args[0].text) {
        value = open->index;
        return true;
      }
    sources_.Fail(call.where, "$$ArrayIndex(" + args[0].text + ") is used outside that array");
  }
  int width = f == "$$byte" ? 8 : f == "$$word" ? 16 : f == "$$long" ? 32 : 0;
  bool bitField = f == "$$bitfield" && args.size() == 3;
  if ((width && args.size() == 1) || bitField) {
    std::int64_t start = Evaluate(args[0], *this, sources_);
    if (bitField) {
      start += Evaluate(args[1], *this, sources_);
      width = static_cast<int>(Evaluate(args[2], *this, sources_));
      if (width < 1 || width > 32)
        sources_.Fail(args[2].where, "a $$BitField length must be from 1 to 32");
    }
    std::uint64_t bits = 0;
    if (start < 0 || !ReadBits(bytes_, static_cast<std::uint64_t>(start), width, bits))
      return Unknown(call, f + " reads past the bytes laid out so far", value);
    value = static_cast<std::int64_t>(bits);
    return true;
  }
  return false;
}

}  // namespace rez
