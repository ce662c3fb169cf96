#include "view/LoaderWords.h"

#include "loader/FltLoaderOption.h"

#include <QFileInfo>
#include <type_traits>

namespace
{

template <class Value>
void add(QStringList& words, FltLoaderOption const& option, Value const& value)
{
    auto const flag = QString::fromUtf8(option.flag.data(), static_cast<int>(option.flag.size()));
    if constexpr (std::is_same_v<Value, bool>) {
        if (value)
            words << flag;
    } else if constexpr (std::is_enum_v<Value>) {
        for (FltLoaderOption::Word const& word : option.words)
            if (word.value == static_cast<int>(value) && word.value != option.defaultWord().value)
                words << flag
                      << QString::fromUtf8(word.inPrograms.data(), static_cast<int>(word.inPrograms.size()));
    } else if constexpr (std::is_same_v<Value, std::vector<std::string>>) {
        for (std::string const& directory : value)
            words << flag << QFileInfo(QString::fromStdString(directory)).absoluteFilePath();
    }
}

} // namespace

QStringList LoaderWords::of(FltLoader const& loader)
{
    QStringList words;
    for (FltLoaderOption const& option : FltLoaderOption::table())
        if (option.programs == FltLoaderOption::Programs::all)
            std::visit([&](auto place) { add(words, option, loader.*place); }, option.member);
    return words;
}
