#pragma once

#include "tests/house/SourceTree.h"

#include <map>
#include <set>

namespace house
{

/// From a folder to the folders that its files include from, itself left out.
using FolderArrows = std::map<std::string, std::set<std::string>>;

/// The arrows between the folders of these files, at every depth; only includes of files that are among them count.
FolderArrows folderArrows(const std::vector<SourceFile>& files);

/// The rings of folders: each a set of folders that all reach each other, sorted; empty for a tree that has none.
std::vector<std::vector<std::string>> folderRings(const FolderArrows& arrows);

/// The arrows that a text draws: the lines "folder -> folder, folder" of its first block of code that begins with the
/// word "arrows". A folder that includes nothing of ours has nothing behind its arrow.
FolderArrows drawnArrows(const std::string& markdown);

/// The room of a folder: its own name, or the nearest one above it; empty for a folder without a room.
std::string roomOf(std::string folder, const std::set<std::string>& rooms);

/// The same arrows between fewer rooms: each folder counts for its room, and arrows within a room are left out. Folders
/// without a room are left out.
FolderArrows arrowsBetweenRooms(const FolderArrows& arrows, const std::set<std::string>& rooms);

} // namespace house
