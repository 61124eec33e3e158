#pragma once

#include <cstdint>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "ports/dialogs.h"
#include "ports/environment.h"

namespace morvelle {

/// One folder of the message store.
struct FolderRec {
  /// Six upper-case hexadecimal digits in the file's byte order, least significant byte first
  /// (folder 5 is "050000"); empty when the record gives none.
  std::string Id;
  /// Windows-1252. A folder that was never used has no file name after its name in the file: its
  /// name then keeps its final zero and whatever follows it.
  std::string Name;
};

/// Reads the mail client's list of folders, `Folders.dbx`, to learn the value with which a move
/// action designates "Éléments supprimés". The file is only ever read.
///
/// Only the folders of the first index node are known; its child nodes are not followed. Whatever
/// the file holds, at most 255 records of at most 32,767 bytes of data are read.
class FolderStore {
 public:
  /// `storeRoot` is the Windows path of the message store, without a "\" at its end; it is read
  /// when the folders are.
  FolderStore(Dialogs& dialogs, const Environment& environment, const std::string& storeRoot)
      : dialogs_(dialogs), environment_(environment), storeRoot_(storeRoot) {}

  /// The eight bytes that mark this store, then the three bytes of the id of "Éléments supprimés";
  /// without that folder the eight bytes alone. "False", after a message, when the file cannot be
  /// read.
  std::string ReadFolders();

  /// \name The steps of ReadFolders, each on the open file. A run-time error in a step is its
  /// failure.
  /// @{

  /// Opens the file for reading; error 53 or 70 where that is not possible.
  void Open();
  void Close() { file_.close(); }
  /// Checks the signature and finds the index node.
  bool CheckDbxHeader(std::int32_t& nodeOffset);
  /// Empties the list of folders and sizes it by the node. A node that does not stand where it says
  /// is reported.
  bool ReadTreeNode(std::int32_t nodeOffset);
  /// Reads every record that the node names; a bad one leaves an empty folder.
  bool ReadFolderEntries(std::int32_t nodeOffset);
  /// Reads the record at `offset` into the folder at `index`, the first being 1. A bad record is
  /// reported and changes nothing. True when the last attribute of the record is not attribute 0.
  bool ReadFolderRecord(std::int16_t index, std::int32_t offset);
  /// @}

  /// Entries of the node, 0 to 255.
  std::int16_t FolderCount = 0;
  /// The folders in node order, FolderCount of them.
  std::vector<FolderRec> Folders;

 private:
  /// Bytes 9404 to 9411 of the file, which begin the value of every action on its folders.
  static constexpr std::int32_t kMarkSize = 8;

  /// Exactly `count` bytes; error 62 where the file has fewer.
  std::string BytesAt(std::int64_t offset, std::int32_t count);
  std::int32_t LongAt(std::int64_t offset);
  std::int16_t ByteAt(std::int64_t offset);
  void Report(std::string_view what, std::int32_t offset);

  Dialogs& dialogs_;
  const Environment& environment_;
  const std::string& storeRoot_;
  std::ifstream file_;
};

}  // namespace morvelle
