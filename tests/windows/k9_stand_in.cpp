#include <windows.h>

/// Stands in for K9's filter: it runs until it is ended, a minute at the most.
int main() {
  constexpr DWORD kMinute = 60000;
  ::Sleep(kMinute);
  return 0;
}
