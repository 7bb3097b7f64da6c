#include "host/standalone/proceso.h"

#include <sys/resource.h>

#ifdef __linux__
#include <sys/prctl.h>
#endif

namespace autonomo {

void ProtegeMemoria() {
  constexpr rlimit kNada{0, 0};
  setrlimit(RLIMIT_CORE, &kNada);
#ifdef __linux__
  prctl(PR_SET_DUMPABLE, 0);  // where core files go to a program, the limit does not hold
#endif
}

}  // namespace autonomo
