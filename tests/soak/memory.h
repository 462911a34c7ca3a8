#pragma once

/// Resident memory of this process in KiB, as the system tells it.
long residentKiB();
