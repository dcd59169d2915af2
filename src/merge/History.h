#pragma once

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include "text/String.h"

namespace quenmar {

/// Steps that can be undone and redone, and which state is saved. A step that is done has the state
/// before it, an undone one the state after it.
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
  /// @param counts whether the step changes what a save writes
  /// @param topic what is being typed: further changes of the same topic are part of the step,
  ///   until something else happens; empty for a step of its own
  /// @param before the state before the step
  void Add(Kind kind, bool counts, const String& topic, State before) {
    topic_ = topic;
    steps_.resize(position_);
    steps_.push_back({std::move(before), current_});
    if (counts) current_ = {++contents_, kind};
    ++position_;
    if (steps_.size() <= kMost) return;
    steps_.erase(steps_.begin());
    --position_;
  }

  [[nodiscard]] bool CanUndo() const { return position_ > 0; }
  [[nodiscard]] bool CanRedo() const { return position_ < steps_.size(); }

  /// Undoes a step. @param swap exchanges the current state and its argument
  template <class SwapState>
  void Undo(SwapState swap) {
    topic_.clear();
    Swap(steps_[--position_], swap);
  }

  template <class SwapState>
  void Redo(SwapState swap) {
    topic_.clear();
    Swap(steps_[position_++], swap);
  }

  void EndTyping() { topic_.clear(); }

  /// The current state is the saved one.
  void MarkSaved() {
    saved_ = current_;
    topic_.clear();
  }

  /// @return the kind of the last step that counts since the save or, when it was undone, before
  /// the save; nothing when the current state has the saved content.
  [[nodiscard]] std::optional<Kind> Unsaved() const {
    if (current_.number == saved_.number) return std::nullopt;
    return std::max(current_, saved_,
                    [](const Content& a, const Content& b) { return a.number < b.number; })
        .made;
  }

 private:
  /// What a save would write; each step that counts makes another one.
  struct Content {
    size_t number = 0;
    Kind made{};  // the kind of the step that made it
  };
  struct Step {
    State state;
    Content content;
  };

  template <class SwapState>
  void Swap(Step& step, SwapState swap) {
    swap(step.state);
    std::swap(step.content, current_);
  }

  std::vector<Step> steps_;
  size_t position_ = 0;  // how many steps are done
  size_t contents_ = 0;
  Content current_;
  Content saved_;
  String topic_;
};

}  // namespace quenmar
