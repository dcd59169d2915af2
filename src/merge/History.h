#pragma once

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include "text/String.h"

namespace quenmar {

/// Steps that can be undone and redone, each with the state on its other side, and which of them
/// are saved.
/// @tparam Kind what a step did
template <class Kind, class State>
class History {
 public:
  /// The oldest steps are forgotten beyond this number.
  static constexpr size_t kMost = 500;

  /// @return whether a change of this topic is part of the last step.
  [[nodiscard]] bool Continues(const String& topic) const {
    return !topic.empty() && topic == topic_;
  }

  /// Adds a step and forgets what was undone.
  /// @param topic what is being typed: further changes of the same topic are part of the step,
  ///   until something else happens; empty for a step of its own
  /// @param before the state before the step
  void Add(Kind kind, const String& topic, State before) {
    topic_ = topic;
    steps_.resize(position_);
    if (saved_ && *saved_ > position_) saved_.reset();
    steps_.push_back({kind, std::move(before)});
    ++position_;
    if (steps_.size() > kMost) ForgetOldest();
  }

  [[nodiscard]] bool CanUndo() const { return position_ > 0; }
  [[nodiscard]] bool CanRedo() const { return position_ < steps_.size(); }

  /// Steps back. @param swap gives the state to return to and receives the one that is left
  template <class Swap>
  void Undo(Swap swap) {
    topic_.clear();
    swap(steps_[--position_].state);
  }

  template <class Swap>
  void Redo(Swap swap) {
    topic_.clear();
    swap(steps_[position_++].state);
  }

  void EndTyping() { topic_.clear(); }

  /// The current state is the saved one.
  void MarkSaved() {
    saved_ = position_;
    topic_.clear();
  }

  /// @return what the last step that counts did since the save, or before it when it was undone;
  /// nothing when the saved state is the current one.
  /// @param counts whether steps of a kind make a difference to what is saved
  template <class Counts>
  [[nodiscard]] std::optional<Kind> Unsaved(Counts counts) const {
    const size_t first = saved_ ? std::min(*saved_, position_) : 0;
    const size_t last = saved_ ? std::max(*saved_, position_) : position_;
    for (size_t i = last; i > first; --i) {
      if (counts(steps_[i - 1].kind)) return steps_[i - 1].kind;
    }
    if (saved_) return std::nullopt;
    return steps_[position_ > 0 ? position_ - 1 : 0].kind;
  }

 private:
  struct Step {
    Kind kind;
    State state;
  };

  void ForgetOldest() {
    steps_.erase(steps_.begin());
    --position_;
    if (saved_ == size_t{0}) saved_.reset();
    if (saved_) --*saved_;
  }

  std::vector<Step> steps_;
  size_t position_ = 0;              // how many steps are done
  std::optional<size_t> saved_ = 0;  // how many were done at the save; nothing: it is out of reach
  String topic_;
};

}  // namespace quenmar
