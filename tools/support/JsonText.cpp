#include "support/JsonText.h"

#include "messages/FltText.h"

#include <nlohmann/json.hpp>

std::string JsonText::of(nlohmann::ordered_json const& json)
{
    using Json = nlohmann::ordered_json;
    return FltText::printableJson(json.dump(2, ' ', false, Json::error_handler_t::replace)) + "\n";
}
