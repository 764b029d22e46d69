// Paths: their text, what exists under them, and where the software's resources lie.
//
// Both `/` and `\` separate in every path given; the paths handed back have the platform's
// separator. Results that point into a buffer of the process hold until the next call of
// the same family: path_DirName and path_BaseName, path_FindResource, path_FindOnPath.
// Nothing here prints; all of it is for one thread at a time.
#pragma once

/// Turns each separator into the platform's and each run of them into one, in place. The
/// first byte stands outside: a leading pair (a network path) stays a pair, and a longer
/// run there becomes one. Does nothing for null.
void path_Normalise(char* path);

/// The part before the last separator, normalised: empty without a separator, the separator
/// itself for one in first place, and with the separator behind a colon ("C:/x" gives "C:/").
/// Null for null and for a part longer than 1024 bytes.
const char* path_DirName(const char* path);

/// The part behind the last separator, or the whole text without one. Null for null and for
/// a part longer than 1024 bytes.
const char* path_BaseName(const char* path);

/// Cuts the last extension off the last part, in place; a dot in its first byte (".profile")
/// begins no extension. Directory and last part are put together again normalised, with a
/// separator between them also behind a directory that ends in one ("/x.c" becomes "//x"),
/// unless the result would outgrow the text. Does nothing for null, nor where path_DirName
/// or path_BaseName has no answer.
void path_StripExtension(char* path);

/// 1 for a drive with or without its root ("C:", "C:\", "C:/"), else 0; text only, on every
/// platform.
int path_IsDriveRoot(const char* path);

/// 1 for a drive alone ("C:"), else 0.
int path_IsDrive(const char* path);

/// 1 when the last part is the name of a device on Windows, in any case and with any
/// extension ("nul", "LPT9.txt"), else 0. Asked on every platform, since data move.
int path_IsReservedName(const char* path);

/// 1 when there is something under the path, trailing separators aside, whose name isn't
/// reserved; else 0.
int path_Exists(const char* path);

/// 16 for a directory that path_Exists finds, else 0.
int path_IsDirectory(const char* path);

/// What a caller takes, as bits of a mask.
constexpr int PATH_ACCEPT_FILE = 1;
constexpr int PATH_ACCEPT_DIRECTORY = 2;

/// 1 when path_Exists finds the path and the mask takes what it is, else 0.
int path_Accepts(const char* path, int mask);

/// Finds a resource of the software: in the places of its kind (the table stands in
/// docs/support/files.md), then beside the running program. Kinds are 1 to 11. A null or
/// empty name asks for the directory itself, and the mask given is not looked at.
/// Returns the first path that the mask accepts, or null.
const char* path_FindResource(int kind, const char* name, int mask);

/// Finds a file in the directories of the environment variable PATH. The first directory
/// that has something of this name decides, and when that is a directory the answer is null.
const char* path_FindOnPath(const char* name);
