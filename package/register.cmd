@echo off
rem register.cmd           registers the library for you alone; needs no administrator rights
rem register.cmd machine   registers it for everybody on this machine; run it as administrator
rem The library is used from where it lies: register again after moving the folder.
setlocal
set failed=0
set options=/n /i:user
if /i "%~1"=="machine" set options=
call :each
if %failed%==0 echo zelUtilities is registered
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
  echo %2\zelUtilities.dll could not be registered
  set failed=1
)
exit /b
