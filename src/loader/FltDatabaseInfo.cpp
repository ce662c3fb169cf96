#include "loader/FltDatabaseInfo.h"

char const* FltDatabaseInfo::nameOf(Unit unit)
{
    switch (unit) {
    case Unit::kilometres:
        return "kilometres";
    case Unit::feet:
        return "feet";
    case Unit::inches:
        return "inches";
    case Unit::nauticalMiles:
        return "nautical miles";
    case Unit::metres:
        break;
    }
    return "metres";
}
