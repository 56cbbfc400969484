#pragma once

#include <QObject>

/** A value whose change is a signal, the way that a Qt program would write it. */
class QtServer : public QObject
{
    Q_OBJECT

public:
    bool set(double value)
    {
        if (value_ == value)
            return false;
        value_ = value;
        emit valueChanged(value);
        return true;
    }

signals:
    void valueChanged(double value);

private:
    double value_ = 0.0;
};

class QtReceiver : public QObject
{
    Q_OBJECT

public slots:

    void onValue(double value) { total_ += value; }

private:
    double total_ = 0.0;
};
