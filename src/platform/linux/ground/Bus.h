#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace onlinux {

// Lines to the buses on which a desktop's programs ask one another, by the bus library, which is loaded with the first
// of them. It is there wherever such a service manager is. A method is waited for no longer than a second.

struct Bus;
struct Message;
struct FreeOfBus {
  void operator()(Bus* bus) const;
  void operator()(Message* message) const;
};
using OwnedBus = std::unique_ptr<Bus, FreeOfBus>;
using OwnedMessage = std::unique_ptr<Message, FreeOfBus>;

// What is used of the library, as its interface has declared it since it has one.
struct BusLibrary {
  int (*openUser)(Bus**) = nullptr;
  int (*openSystem)(Bus**) = nullptr;
  Bus* (*close)(Bus*) = nullptr;
  int (*newCall)(Bus*, Message**, const char*, const char*, const char*, const char*) = nullptr;
  int (*append)(Message*, const char*, ...) = nullptr;
  int (*openContainer)(Message*, char, const char*) = nullptr;
  int (*closeContainer)(Message*) = nullptr;
  int (*setAutoStart)(Message*, int) = nullptr;
  int (*call)(Bus*, Message*, std::uint64_t, void*, Message**) = nullptr;
  int (*readBasic)(Message*, char, void*) = nullptr;
  int (*uniqueName)(Bus*, const char**) = nullptr;
  Message* (*unref)(Message*) = nullptr;
  void (*freeError)(void*) = nullptr;
  int (*displayOf)(unsigned, char**) = nullptr;
};
// Null where it is not there.
const BusLibrary* TheBusLibrary();

// Null where there is no such bus, or no library for it.
OwnedBus OpenUserBus();
OwnedBus OpenSystemBus();

struct Method {
  const char* service;
  const char* path;
  const char* interface;
  const char* name;
};
// Calls a method of a service that runs, with what `fill` appends, which gives false where it could not. Null where it
// fails; `refusal` then holds what the service said, if it did.
OwnedMessage Call(Bus& bus, const Method& method, const std::function<bool(Message&)>& fill,
                  std::string* refusal = nullptr);

}  // namespace onlinux
