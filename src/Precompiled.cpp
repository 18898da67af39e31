// The headers that nearly every room reads are compiled with this file (cmake/TulvaneRooms.cmake).
