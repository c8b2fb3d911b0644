// Labels and array counts while a resource is laid out, and the scope that
// template expressions are evaluated in: a label is the bit offset of its
// place from the start of the resource, indexed by the elements of the
// arrays around it; $$Countof and $$ArrayIndex answer from the open arrays.
#pragma once
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "rez/rez_layout.h"

namespace rez {

// Thrown by a decoding scope when an expression needs a label or count the
// decoder has not reached yet: the field is then read without a check.
struct Unresolved {};

class LabelBook {
 public:
  explicit LabelBook(const TypeDecl& decl);
  enum class Missing { Zero, Fail, Throw };

  void Enter(const std::string& array) { open_.push_back(Open{&array, 0}); }
  void Next() { ++open_.back().index; }
  void Leave() { open_.pop_back(); }
  void Place(const std::string& label, int depth, std::int64_t bit);
  void Count(const std::string& array, int depth, std::int64_t count);
  bool FindCount(const std::string& array, std::int64_t& count) const;
  bool IsArray(const std::string& name) const { return arrays_.count(name) != 0; }
  int ArrayDepth(const std::string& name) const { return arrays_.at(name); }
  bool HasLabels() const { return !labels_.empty(); }
  // Forgets what a failed trial decode placed.
  struct Mark {
    std::map<std::string, std::map<std::vector<int>, std::int64_t>> positions, counts;
  };
  Mark Save() const { return Mark{positions_, counts_}; }
  void Restore(Mark m) {
    positions_ = std::move(m.positions);
    counts_ = std::move(m.counts);
  }

  // The scope of one evaluation over the bytes laid out so far.
  class Lookup : public Scope {
   public:
    Lookup(const LabelBook& book, const ResourceContext& context, const std::string& bytes,
           const SourceSet& sources, Missing missing)
        : book_(book), context_(context), bytes_(bytes), sources_(sources), missing_(missing) {}
    bool Name(const Expr& name, std::int64_t& value) override;
    bool Function(const Expr& call, std::int64_t& value) override;

   private:
    const LabelBook& book_;
    const ResourceContext& context_;
    const std::string& bytes_;
    const SourceSet& sources_;
    Missing missing_;
    bool Unknown(const Expr& at, const std::string& what, std::int64_t& value);
    std::vector<int> PathFor(int depth, const std::vector<Expr>& subscripts);
  };

 private:
  struct Open {
    const std::string* array;
    int index;
  };
  std::map<std::string, int> labels_;  // label name -> depth
  std::map<std::string, int> arrays_;  // array name -> depth
  std::map<std::string, std::map<std::vector<int>, std::int64_t>> positions_, counts_;
  std::vector<Open> open_;
  std::vector<int> Path(int depth) const;
  void Collect(const std::vector<Field>& fields);
};

// The value of width bits at bit offset from the start of bytes, or false
// when they run past the end.
bool ReadBits(const std::string& bytes, std::uint64_t bit, int width, std::uint64_t& value);

}  // namespace rez
