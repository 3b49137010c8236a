#include "xml/Xml.hpp"

namespace pagora {

const std::string* XmlAttributes::find(const std::string& name) const
{
    for (const auto& attribute : _attributes) {
        if (attribute.name == name)
            return &attribute.value;
    }
    return nullptr;
}

}
