import time


def until(condition, limit, complaint):
    """The first true value of condition(); complaint() words the failure once the limit (seconds) is over."""
    end = time.monotonic() + limit
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise TimeoutError(complaint())
        time.sleep(0.02)
