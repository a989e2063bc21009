// The library's services, for programs without windows.
#pragma once

#include "toolbox/keys.h"
#include "toolbox/messages.h"

/// Message service and keys for the length of the program. Errors are collected, not shown in
/// boxes.
class Services {
  public:
    /// `registerTexts` makes the program's texts known.
    Services(GMSG::Language language, void (*registerTexts)()) {
        GMSG::initStaticVars();
        UDManager::initStaticVars();
        GMSG::setErrorReportingOption(GMSG::ReportInList);
        GMSG::language = language;
        registerTexts();
    }
    ~Services() {
        UDManager::destroyStaticVars();
        GMSG::destroyStaticVars();
    }
    Services(const Services&) = delete;
    Services& operator=(const Services&) = delete;

  private:
    GMSG service_;
};
