#pragma once

#include <sys/stat.h>

#include <string>
#include <vector>

// What a shared tree consists of, and the permissions with which every user of the machine can use
// it. Folders have no sticky bit: each user's bridge deletes and replaces there what another user's
// has made (an installation log, the exchange files of the default project).
constexpr mode_t kSharedFolderMode = 0777;
// Text files that the bridge writes in place, whoever made them.
constexpr mode_t kSharedFileMode = 0666;
constexpr mode_t kReadFileMode = 0444;
constexpr mode_t kShippedFolderMode = 0755;
constexpr mode_t kShippedFileMode = 0644;
constexpr mode_t kShippedProgramMode = 0755;
constexpr mode_t kModeBits = 07777;

inline constexpr char kDescriptorName[] = "Vek_Info.txt";
inline constexpr char kConfigName[] = "Vek_Config.txt";
inline constexpr char kInstallListName[] = "Vek_InstallList.txt";
inline constexpr char kInstallLogName[] = "Vek_InstallLog.txt";
// Begins the names of files that are being copied.
inline constexpr char kUnfinishedName[] = ".vek-init-";

// Below the tree's own folder, parents first.
const std::vector<std::string>& treeFolders();
// The names of the text files of the hub folder, and of those of an application's folder that the
// bridge writes. An installation log is none of them: that it is there has a meaning.
const std::vector<std::string>& hubFiles();
const std::vector<std::string>& appFiles();

bool contains(const std::vector<std::string>& names, const std::string& name);

// "0755"
std::string modeText(mode_t mode);
// The text with control characters spelled out, so that a name cannot play tricks on a terminal.
std::string printable(const std::string& text);
