// What grants hold for, and what of a command line and an address they are asked about.
#include "os/grants.h"

#include <gtest/gtest.h>

#include "text/encoding.h"

namespace os {
namespace {

// What a program that asks reads otherwise than another one names no server at all.
TEST(Grants, AnAddressNamesTheServerThatIsAsked) {
  const struct {
    const char* address;
    const wchar_t* host;
  } rows[] = {
      {"http://plm.example.com/x", L"plm.example.com"},
      {"HTTPS://PLM.example.com:8443?q", L"plm.example.com:8443"},
      {"http://user:pa@plm@evil.com/", L"evil.com"},
      {"http://[::1]:80/", L"[::1]:80"},
      {"http://good.com\\@evil.com/", L""},
      {"evil.com/?x=http://good.com/", L""},
      {"http://good.com%2eevil.com/", L""},
      {"http:///evil.com", L""},
      {"http://evil.com:/", L"evil.com"},
      {"http://evil.com:080/", L"evil.com:80"},
      {"http://evil.com:80:81/", L""},
      {"http://evil.com:0/", L""},
      {"http://::1/", L""},
      {"http:/good.com", L""},
      {"ftp://good.com/", L""},
      {" http://good.com/", L""},
      {"http://go od.com/", L""},
  };
  Grants grants;
  grants.allow({Permission::net, L"Good.com"});
  grants.allow({Permission::net, L"plm.example.com:8443"});
  for (const auto& [address, host] : rows) {
    EXPECT_EQ(host, hostOf(address)) << address;
    EXPECT_EQ(std::wstring_view(host) == L"plm.example.com:8443", Grants::isOpen(grants.mayAsk(hostOf(address))))
        << address;
  }
  EXPECT_TRUE(Grants::isOpen(grants.mayAsk(L"good.com:81")));
  EXPECT_FALSE(Grants::isOpen(grants.mayAsk(L"plm.example.com")));
  grants.deny({Permission::net, L"good.com:443"});  // said or not
  for (const wchar_t* server : {L"good.com", L"good.com:443", L"127.0.0.1", L"[::1]", L"[::1]:8080"})
    EXPECT_TRUE(isServer(server)) << server;
  // As a denial these would hold nothing back.
  for (const wchar_t* none : {L"::1", L"[::1", L"[::1]:", L"good.com:", L"good.com:080", L"good.com:x", L"u@good.com",
                              L"http://good.com", L"good.com/x", L"good com", L"a:b:80", L":80", L""})
    EXPECT_FALSE(isServer(none)) << none;
  for (const char* address :
       {"https://good.com/", "https://GOOD.com:443/", "https://good.com:0443", "http://good.com:443"})
    EXPECT_EQ(Grants::Verdict::denied, grants.mayAsk(hostAndPortOf(address))) << address;
  for (const char* address : {"http://good.com/", "https://good.com:8443/"})
    EXPECT_EQ(Grants::Verdict::granted, grants.mayAsk(hostAndPortOf(address))) << address;
}

}  // namespace
}  // namespace os
