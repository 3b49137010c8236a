#include "base/Data.hpp"

#include <utility>

namespace pagora {

Data::Content::Content(std::size_t size, std::string bytes, Reader reader)
    : size(size)
    , bytes(std::move(bytes))
    , reader(std::move(reader))
{
}

Data::Data(std::string bytes)
{
    const std::size_t size = bytes.size();
    _content = std::make_shared<const Content>(size, std::move(bytes), Reader());
}

Data::Data(std::size_t size, Reader reader)
    : _content(std::make_shared<const Content>(size, std::string(), std::move(reader)))
{
}

std::size_t Data::size() const
{
    return _content->size;
}

std::string Data::bytes() const
{
    Reader read;
    {
        const std::lock_guard lock(_content->mutex);
        if (!_content->reader)
            return _content->bytes;
        read = _content->reader;
    }
    return read().value_or(std::string());
}

bool Data::operator==(const Data& other) const
{
    return isSameAs(other) || (size() == other.size() && bytes() == other.bytes());
}

Data::Reader Data::reader() const
{
    const std::lock_guard lock(_content->mutex);
    return _content->reader;
}

void Data::keepIn(Reader reader) const
{
    std::string letGo;
    const std::lock_guard lock(_content->mutex);
    _content->reader.swap(reader);
    _content->bytes.swap(letGo);
}

}
