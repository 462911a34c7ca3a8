#include "support/waitingpackets.h"
