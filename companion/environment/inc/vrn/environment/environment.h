#pragma once

#include <vrn/environment/vrn_environment_export.h>

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace vrn::app {

/// The folders in which one kind of resource file is looked for.
class VRN_ENVIRONMENT_EXPORT PathGroup
{
public:
    /// Appends a folder to those that the application wants searched first.
    void addPath(const std::filesystem::path& folder);

    /// The path of the regular file called `name` in the first folder that has
    /// one: the added folders in their order, then the folder of the
    /// executable, then the installed data folder of this library. An empty
    /// path if no folder has it. Never throws for a name or a folder that cannot be
    /// read.
    std::filesystem::path find(const std::wstring& name) const;

private:
    std::vector<std::filesystem::path> m_folders;
};

/// The resource folders of the process, one group of them per name; the empty
/// name is the default group. For the GUI thread only.
class VRN_ENVIRONMENT_EXPORT Environment
{
public:
    static Environment& instance();

    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;

    /// The group called `group`, made at the first call. The reference stays
    /// valid until the process ends.
    PathGroup& getPaths(const std::string& group);

private:
    Environment() = default;

    std::map<std::string, PathGroup> m_groups;
};

} // namespace vrn::app
