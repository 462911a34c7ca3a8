#pragma once

#include <memory>
#include <QCoreApplication>

/// Makes the application object for widgets. Where the platform cannot be initialised, of which Qt would
/// abort, this complains on one line of standard error and ends the program with status 2.
std::unique_ptr<QCoreApplication> createWidgetsApplication(int &argc, char **argv);
