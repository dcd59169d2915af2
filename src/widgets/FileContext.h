#pragma once

#include "conf/ConfDocuments.h"
#include "conf/ConfWriter.h"
#include "conf/MessageBoxes.h"
#include "registry/Language.h"
#include "registry/Options.h"
#include "text/String.h"

namespace quenmar {

/// What the main window hands to the windows that it opens for one file. All references outlive
/// those windows.
struct FileContext {
  const Options& options;
  const Language& language;
  MessageBoxes& messages;
  ConfDocuments documents;  ///< both files, read to their ends
  String serverFolder;      ///< as the server folder box has it
  String fileName;          ///< of the configuration file, without a folder
  OpenedFile server = {};   ///< the server's file, which Apply saves
};

}  // namespace quenmar
