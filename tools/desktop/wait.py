import time


def until(condition, limit, complaint):
    """Returns the first true value of condition(). After limit seconds, raises TimeoutError(complaint())."""
    end = time.monotonic() + limit
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise TimeoutError(complaint())
        time.sleep(0.02)
