// What all ports have in common.
#pragma once

namespace sitekeeper {

/// A need of the program that the platform answers. Ports are handed around by reference, never copied.
class Port
{
public:
    Port() = default;
    Port(const Port&) = delete;
    Port& operator=(const Port&) = delete;
    virtual ~Port() = default;
};

} // namespace sitekeeper
