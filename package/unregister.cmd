@echo off
rem unregister.cmd           ends the registration for you alone
rem unregister.cmd machine   ends that for everybody on this machine; run it as administrator
setlocal
set failed=0
set options=/u /n /i:user
if /i "%~1"=="machine" set options=/u
call :each
if %failed%==0 echo zelUtilities is no longer registered
exit /b %failed%

rem A 64-bit system has two of everything; a 32-bit command prompt sees the 64-bit one as Sysnative.
:each
set native=%SystemRoot%\System32\regsvr32.exe
if exist "%SystemRoot%\Sysnative\regsvr32.exe" set native=%SystemRoot%\Sysnative\regsvr32.exe
if exist "%SystemRoot%\SysWOW64\regsvr32.exe" (
  call :one "%native%" x64
  call :one "%SystemRoot%\SysWOW64\regsvr32.exe" x86
) else (
  if /i "%PROCESSOR_ARCHITECTURE%"=="x86" (call :one "%native%" x86) else (call :one "%native%" x64)
)
exit /b

:one
if not exist "%~dp0%2\zelUtilities.dll" exit /b
%1 /s %options% "%~dp0%2\zelUtilities.dll"
if errorlevel 1 (
  echo %2\zelUtilities.dll could not be unregistered
  set failed=1
)
exit /b
