/**
  ******************************************************************************
  * @file     syscalls.c
  * @brief    what the C library asks of a system, for a program without one
  ******************************************************************************
  */

#include <errno.h>
#include <stdint.h>
#include <sys/stat.h>

int _close(int file);
int _fstat(int file, struct stat *st);
int _getpid(void);
int _isatty(int file);
int _kill(int pid, int sig);
int _lseek(int file, int ptr, int dir);
int _read(int file, char *ptr, int len);
int _write(int file, char *ptr, int len);
void _exit(int status);

int _close(int file)
{
  (void)file;
  return -1;
}

int _fstat(int file, struct stat *st)
{
  (void)file;
  st->st_mode = S_IFCHR;
  return 0;
}

int _getpid(void)
{
  return 1;
}

int _isatty(int file)
{
  (void)file;
  return 1;
}

int _kill(int pid, int sig)
{
  (void)pid;
  (void)sig;
  errno = EINVAL;
  return -1;
}

int _lseek(int file, int ptr, int dir)
{
  (void)file;
  (void)ptr;
  (void)dir;
  return 0;
}

int _read(int file, char *ptr, int len)
{
  (void)file;
  (void)ptr;
  (void)len;
  return 0;
}

/* takes the output of a program that does not send it anywhere itself */
__attribute__((weak)) int _write(int file, char *ptr, int len)
{
  (void)file;
  (void)ptr;
  return len;
}

void _exit(int status)
{
  (void)status;
  while(1)
  {
  }
}
