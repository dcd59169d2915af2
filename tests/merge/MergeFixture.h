// A file in the distribution and on the server, opened as the windows open it.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "ScratchFolder.h"
#include "ScriptedMessages.h"
#include "Trees.h"
#include "merge/FileMerge.h"

namespace quenmar {

class MergeFixture : public ::testing::Test {
 protected:
  using List = FileMerge::List;
  using Purpose = FileMerge::Purpose;

  MergeFixture(std::string_view distribution, std::string_view server) {
    Write(distribution, server);
  }

  void Write(std::string_view distribution, std::string_view server) {
    WriteFile(dist_, distribution);
    WriteFile(conf_, server);
  }

  void Open(Purpose purpose = Purpose::kCompare, Layout layout = Layout::kServer) {
    request_.purpose = purpose;
    request_.layout = layout;
    merge_ = FileMerge::Open(request_, with_);
  }

  bool Save() { return merge_->Save(merge_->Plan()); }

  /// @return the new, the actual and the obsolete settings.
  [[nodiscard]] std::string Lists() const {
    const auto list = [this](List which) { return Values(merge_->Tree(which)); };
    return list(List::kNew) + " | " + list(List::kKept) + " | " + list(List::kObsolete);
  }

  /// @return the numbers of the server's settings that the filter shows.
  [[nodiscard]] std::string Rows(const SettingFilter& filter) const {
    std::string rows;
    for (int index = 0; index < merge_->ServerSettings().Fields().Count(); ++index) {
      if (merge_->IsShown(index, filter)) rows += std::to_string(index);
    }
    return rows;
  }

  ScratchFolder folder_;
  Path dist_ = folder_ / "dist/a.conf", conf_ = folder_ / "conf/a.conf",
       copy_ = folder_ / "conf/a.conf.bak";
  FileMerge::Request request_{dist_, conf_};
  Options options_;
  Language language_;
  ScriptedMessages messages_;
  const MergeContext with_{options_, language_, messages_};
  std::unique_ptr<FileMerge> merge_;
};

}  // namespace quenmar
