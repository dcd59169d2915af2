#pragma once

#include "merge/FileMerge.h"
#include "text/String.h"

namespace quenmar {

/// What the main window hands to the windows that it opens for one file. All references outlive
/// those windows.
struct FileContext {
  FileMerge& merge;     ///< the file in both versions
  MergeContext with;    ///< what the merge works with
  String serverFolder;  ///< as the server folder box has it
  String fileName;      ///< of the configuration file, without a folder
};

}  // namespace quenmar
