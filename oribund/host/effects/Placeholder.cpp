namespace oribund { }
