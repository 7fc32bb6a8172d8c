/**
  ******************************************************************************
  * @file     sysmem.c
  * @brief    the heap of the C library: from the end of the data to the stack
  ******************************************************************************
  */

#include <errno.h>
#include <stddef.h>
#include <stdint.h>

/* set by the linker script */
extern uint8_t _end;
extern uint8_t _estack;
extern uint32_t _Min_Stack_Size;

void *_sbrk(ptrdiff_t incr);

/**
  * @brief  move the end of the heap
  * @param  incr: bytes, may be negative
  * @retval the former end, or -1 with errno set where the stack begins
  */
void *_sbrk(ptrdiff_t incr)
{
  static uint8_t *heap_end = NULL;
  const uint8_t *limit = (const uint8_t *)((uintptr_t)&_estack - (uintptr_t)&_Min_Stack_Size);
  uint8_t *former;

  if(heap_end == NULL)
  {
    heap_end = &_end;
  }
  if(incr > limit - heap_end)
  {
    errno = ENOMEM;
    return (void *)-1;
  }
  former = heap_end;
  heap_end += incr;
  return former;
}
