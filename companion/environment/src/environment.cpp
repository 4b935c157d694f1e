#include <vrn/environment/environment.h>

#include <boost/locale/encoding_utf.hpp>

#include <system_error>

namespace fs = std::filesystem;

namespace vrn::app {
namespace {

// A path made from a wide string would be converted by the C library's locale, which
// throws for letters that it lacks. File names are bytes here, in UTF-8.
fs::path pathFromWide(const std::wstring& name)
{
    return fs::path(boost::locale::conv::utf_to_utf<char>(name));
}

fs::path executableFolder()
{
    std::error_code error;
    return fs::read_symlink("/proc/self/exe", error).parent_path();
}

bool isFile(const fs::path& path)
{
    std::error_code error;
    return fs::is_regular_file(path, error);
}

} // namespace

void PathGroup::addPath(const fs::path& folder)
{
    m_folders.push_back(folder);
}

fs::path PathGroup::find(const std::wstring& name) const
{
    const fs::path file = pathFromWide(name);
    for (const fs::path& folder : m_folders) {
        if (isFile(folder / file))
            return folder / file;
    }
    for (const fs::path& folder : {executableFolder(), fs::path(VRN_INSTALLED_DATA_DIR)}) {
        if (isFile(folder / file))
            return folder / file;
    }
    return {};
}

Environment& Environment::instance()
{
    static Environment environment;
    return environment;
}

PathGroup& Environment::getPaths(const std::string& group)
{
    return m_groups[group];
}

} // namespace vrn::app
