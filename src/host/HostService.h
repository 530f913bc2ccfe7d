#pragma once
// Base of every object created by programmatic name.
class HostService
{
public:
    virtual ~HostService() = default;
};
