// The environment of the process.
#pragma once

/// The value of an environment variable, or null when it isn't set. For immediate use: it
/// is gone with the next change of the environment.
const char* env_Get(const char* name);

/// Sets a variable for this process and those that it starts; a null value deletes it.
/// Returns 1 on success; 0 for a name that is null, empty or holds '=', and for a name and
/// value that with the '=' between them are longer than 280 bytes, which change nothing.
int env_Set(const char* name, const char* value);
