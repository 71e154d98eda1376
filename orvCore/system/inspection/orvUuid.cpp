// orvCore/system/inspection/orvUuid.cpp
#include "system/inspection/orvUuid.h"

#include <cstdio>
#include <cstring>
#include <iomanip>
#include <sstream>

#include "system/debug/orvAssert.h"
#include "system/log/orvCoreLog.h"

namespace orv
{

Uuid::Uuid(const char* text)
{
    if (text == nullptr)
    {
        return;
    }
    // Scanned into zeroed locals: whatever the scan stops short of stays zero, so a malformed text gives the same
    // value on every run.
    unsigned int data0 = 0;
    unsigned short data1 = 0;
    unsigned short data2 = 0;
    unsigned int data3[8] = {0, 0, 0, 0, 0, 0, 0, 0};
    sscanf(text, "%8X-%4hX-%4hX-%02x%02x-%02x%02x%02x%02x%02x%02x", &data0, &data1, &data2, &data3[0], &data3[1],
           &data3[2], &data3[3], &data3[4], &data3[5], &data3[6], &data3[7]);
    _data0 = data0;
    _data1 = data1;
    _data2 = data2;
    for (int i = 0; i < 8; ++i)
    {
        _data3[i] = static_cast<uint8_t>(data3[i]);
    }
}

bool Uuid::operator==(const Uuid& other) const
{
    return memcmp(this, &other, sizeof(Uuid)) == 0;
}

bool Uuid::operator<(const Uuid& other) const
{
    return memcmp(this, &other, sizeof(Uuid)) < 0;
}

bool Uuid::operator>(const Uuid& other) const
{
    return memcmp(this, &other, sizeof(Uuid)) > 0;
}

Uuid Uuid::operator+(const Uuid& other) const
{
    Uuid result;
    result._data0 = static_cast<uint32_t>(_data0 + 2u * other._data0);
    result._data1 = static_cast<uint16_t>(_data1 + 2u * other._data1);
    result._data2 = static_cast<uint16_t>(_data2 + 2u * other._data2);
    // The trailing bytes double the left operand, unlike the fields above: template identifiers in files rest on it.
    for (int i = 0; i < 8; ++i)
    {
        result._data3[i] = static_cast<uint8_t>(2u * _data3[i] + other._data3[i]);
    }
    return result;
}

Uuid Uuid::operator+(unsigned int n) const
{
    Uuid result(*this);
    result._data0 = static_cast<uint32_t>(_data0 + n);
    return result;
}

Uuid Uuid::createUuid()
{
    OrvString text;
    int status = -1;
    FILE* pipe = popen("uuidgen", "r");
    if (pipe == nullptr)
    {
        text = "ERROR";
    }
    else
    {
        char piece[128];
        while (fgets(piece, sizeof(piece), pipe) != nullptr)
        {
            text += piece;
        }
        status = pclose(pipe);
    }
    if (!text.empty())
    {
        // The newline that ends uuidgen's output.
        text.pop_back();
    }
    if (pipe == nullptr || status != 0 || text.empty())
    {
        orvLogCore(LogSeverity::LOG_ERROR, "uuidgen gave no identifier (status " << status << "), text \"" << text
                                                                                 << "\"; the null Uuid is used");
        return Uuid();
    }
    return Uuid(text.c_str());
}

bool Uuid::isNull() const
{
    static const Uuid null;
    return *this == null;
}

OrvString Uuid::getString() const
{
    std::ostringstream stream;
    stream << std::hex << std::nouppercase << std::setfill('0');
    stream << std::setw(8) << _data0 << "-";
    orvAssert(static_cast<uint32_t>(stream.str().size()) == 9);
    stream << std::setw(4) << _data1 << "-";
    stream << std::setw(4) << _data2 << "-";
    stream << std::setw(2) << static_cast<unsigned int>(_data3[0]) << std::setw(2)
           << static_cast<unsigned int>(_data3[1]) << "-";
    for (int i = 2; i < 8; ++i)
    {
        stream << std::setw(2) << static_cast<unsigned int>(_data3[i]);
    }
    return OrvString(stream.str());
}

} // namespace orv
